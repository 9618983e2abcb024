#include "BdaTestHelpers.h"

#include <oleauto.h>

namespace labtest {

TestVariant::TestVariant(const wchar_t *text)
{
    VariantInit(&m_value);
    V_VT(&m_value) = VT_BSTR;
    V_BSTR(&m_value) = SysAllocString(text);
}

TestVariant::TestVariant(long value)
{
    VariantInit(&m_value);
    V_VT(&m_value) = VT_I4;
    V_I4(&m_value) = value;
}

TestVariant::~TestVariant()
{
    VariantClear(&m_value);
}

namespace {
std::wstring takeText(BSTR text)
{
    std::wstring result = text ? std::wstring(text, SysStringLen(text)) : std::wstring();
    SysFreeString(text);
    return result;
}
} // namespace

std::wstring uniqueName(ITuningSpace *space)
{
    BSTR text = nullptr;
    if (!space || FAILED(space->get_UniqueName(&text)))
        return std::wstring();
    return takeText(text);
}

std::wstring networkType(ITuningSpace *space)
{
    BSTR text = nullptr;
    if (!space || FAILED(space->get_NetworkType(&text)))
        return std::wstring();
    return takeText(text);
}

CComPtr<ITuningSpace> systemSpace(const wchar_t *name)
{
    CComPtr<ITuningSpaceContainer> container;
    CComPtr<ITuningSpace> space;
    if (SUCCEEDED(container.CoCreateInstance(CLSID_SystemTuningSpaces, nullptr, CLSCTX_INPROC_SERVER)))
        container->get_Item(TestVariant(name).get(), &space);
    return space;
}

std::vector<std::wstring> names(IEnumTuningSpaces *spaces)
{
    std::vector<std::wstring> result;
    CComPtr<ITuningSpace> space;
    while (spaces && spaces->Next(1, &space, nullptr) == S_OK) {
        result.push_back(uniqueName(space));
        space.Release();
    }
    return result;
}

CComPtr<ITuneRequest> atscRequest(const wchar_t *spaceName, long channel, long frequency, long physical,
                                  ModulationType modulation, long program)
{
    CComPtr<ITuningSpace> space = systemSpace(spaceName);
    CComPtr<ITuneRequest> request;
    if (!space || FAILED(space->CreateTuneRequest(&request)))
        return nullptr;
    CComQIPtr<IATSCChannelTuneRequest> channelRequest(request);
    if (channelRequest)
        channelRequest->put_Channel(channel);
    if (frequency < 0 && physical < 0 && modulation == BDA_MOD_NOT_SET && program < 0)
        return request;
    CComPtr<IATSCLocator2> locator;
    if (FAILED(locator.CoCreateInstance(CLSID_ATSCLocator, nullptr, CLSCTX_INPROC_SERVER)))
        return nullptr;
    locator->put_CarrierFrequency(frequency);
    locator->put_PhysicalChannel(physical);
    locator->put_Modulation(modulation);
    locator->put_ProgramNumber(program);
    request->put_Locator(locator);
    return request;
}

CComPtr<ITuneRequest> dvbtRequest(long frequency, long bandwidth)
{
    CComPtr<ITuningSpace> space = systemSpace(L"DVB-T");
    CComPtr<ITuneRequest> request;
    CComPtr<IDVBTLocator> locator;
    if (!space || FAILED(space->CreateTuneRequest(&request)) ||
        FAILED(locator.CoCreateInstance(CLSID_DVBTLocator, nullptr, CLSCTX_INPROC_SERVER)))
        return nullptr;
    locator->put_CarrierFrequency(frequency);
    locator->put_Bandwidth(bandwidth);
    request->put_Locator(locator);
    return request;
}

} // namespace labtest
