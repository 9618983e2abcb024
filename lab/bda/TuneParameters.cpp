#include "bda/TuneParameters.h"

#include <atlbase.h>

#include "bda/ChannelPlan.h"
#include "bda/ScopedBstr.h"
#include "lab/BdaGuids.h"

namespace lab {

namespace {

struct ModulationName {
    ModulationType modulation;
    const wchar_t *name;
};

const ModulationName kModulations[] = {
    {BDA_MOD_NOT_SET, L"NOT_SET"}, {BDA_MOD_16QAM, L"16QAM"},   {BDA_MOD_32QAM, L"32QAM"},
    {BDA_MOD_64QAM, L"64QAM"},     {BDA_MOD_128QAM, L"128QAM"}, {BDA_MOD_256QAM, L"256QAM"},
    {BDA_MOD_QPSK, L"QPSK"},       {BDA_MOD_8VSB, L"8VSB"},     {BDA_MOD_16VSB, L"16VSB"},
};

bool isAtscFamily(const GUID &networkType)
{
    return IsEqualGUID(networkType, kNetworkTypeAtsc) || IsEqualGUID(networkType, kNetworkTypeDigitalCable);
}

ModulationType modulationOf(ILocator *locator)
{
    ModulationType modulation = BDA_MOD_NOT_SET;
    if (locator && FAILED(locator->get_Modulation(&modulation)))
        modulation = BDA_MOD_NOT_SET;
    return modulation;
}

long bandwidthOf(ILocator *locator)
{
    CComQIPtr<IDVBTLocator> dvbt(locator);
    LONG bandwidth = -1;
    if (!dvbt || FAILED(dvbt->get_Bandwidth(&bandwidth)))
        return -1;
    return bandwidth;
}

bool isCableSpace(ITuningSpace *space)
{
    CComQIPtr<IAnalogTVTuningSpace> analog(space);
    TunerInputType input = TunerInputAntenna;
    return analog && SUCCEEDED(analog->get_InputType(&input)) && input == TunerInputCable;
}

long atscFrequency(ITuningSpace *space, ILocator *locator, long requestChannel)
{
    LONG physical = -1;
    CComQIPtr<IATSCLocator> atsc(locator);
    if (!atsc || FAILED(atsc->get_PhysicalChannel(&physical)) || physical <= 0)
        physical = requestChannel;
    if (physical <= 0)
        return -1;
    return isCableSpace(space) ? ChannelPlan::cableKhz(physical) : ChannelPlan::terrestrialKhz(physical);
}

} // namespace

HRESULT TuneParameters::read(ITuneRequest *request, TuneParameters &out)
{
    out = TuneParameters();
    CComPtr<ITuningSpace> space;
    if (!request || FAILED(request->get_TuningSpace(&space)) || !space)
        return E_INVALIDARG;
    ScopedBstr name;
    if (SUCCEEDED(space->get_UniqueName(name.out())))
        out.spaceName = name.text();
    space->get__NetworkType(&out.networkType);

    CComPtr<ILocator> fallback;
    space->get_DefaultLocator(&fallback);
    CComPtr<ILocator> locator;
    if (FAILED(request->get_Locator(&locator)) || !locator)
        locator = fallback;

    CComQIPtr<IATSCChannelTuneRequest> atscRequest(request);
    if (atscRequest) {
        atscRequest->get_Channel(&out.channel);
        atscRequest->get_MinorChannel(&out.minorChannel);
    }
    CComQIPtr<IATSCLocator2> atscLocator(locator);
    if (atscLocator)
        atscLocator->get_ProgramNumber(&out.program);
    CComQIPtr<IDVBTuneRequest> dvbRequest(request);
    if (dvbRequest)
        dvbRequest->get_SID(&out.program);

    LONG carrier = -1;
    if (locator && SUCCEEDED(locator->get_CarrierFrequency(&carrier)) && carrier > 0)
        out.frequencyKhz = carrier;
    else if (isAtscFamily(out.networkType))
        out.frequencyKhz = atscFrequency(space, locator, out.channel);

    out.modulation = modulationOf(locator);
    if (out.modulation == BDA_MOD_NOT_SET)
        out.modulation = modulationOf(fallback);

    if (!isAtscFamily(out.networkType)) {
        out.bandwidthMhz = bandwidthOf(locator);
        if (out.bandwidthMhz <= 0)
            out.bandwidthMhz = bandwidthOf(fallback);
        if (out.bandwidthMhz <= 0)
            out.bandwidthMhz = 6;
    }
    return S_OK;
}

std::wstring TuneParameters::modulationName(ModulationType modulation)
{
    for (const ModulationName &entry : kModulations) {
        if (entry.modulation == modulation)
            return entry.name;
    }
    return L"modulation-" + std::to_wstring(static_cast<int>(modulation));
}

std::wstring TuneParameters::networkName(const GUID &networkType)
{
    if (IsEqualGUID(networkType, kNetworkTypeAtsc))
        return L"ATSC";
    if (IsEqualGUID(networkType, kNetworkTypeDvbt))
        return L"DVB-T";
    if (IsEqualGUID(networkType, kNetworkTypeDigitalCable))
        return L"DigitalCable";
    return L"Unknown";
}

std::wstring TuneParameters::describe() const
{
    return networkName(networkType) + L" " + spaceName + L" " + std::to_wstring(frequencyKhz) + L" kHz " +
           modulationName(modulation) + L" " + std::to_wstring(bandwidthMhz) + L" MHz channel " +
           std::to_wstring(channel) + L" minor " + std::to_wstring(minorChannel) + L" program " +
           std::to_wstring(program);
}

} // namespace lab
