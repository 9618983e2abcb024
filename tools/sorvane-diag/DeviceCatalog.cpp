#include "DeviceCatalog.h"
#include "HostError.h"
#include "VariantOwner.h"

#include <atlbase.h>
#include <dshow.h>


namespace sorvane {
namespace diag {

namespace {

// A text value of the moniker's property bag; empty when it has none.
std::wstring readText(IPropertyBag* bag, const wchar_t* name)
{
    VariantOwner value;
    if (FAILED(bag->Read(name, value.get(), nullptr)) || value.value().vt != VT_BSTR || !value.value().bstrVal)
        return std::wstring();
    return std::wstring(value.value().bstrVal, SysStringLen(value.value().bstrVal));
}

bool tunerOf(IUnknown* object, long& modes)
{
    CComQIPtr<IAMTVTuner> tuner(object);
    if (!tuner) return false;
    if (FAILED(tuner->GetAvailableModes(&modes))) modes = 0;
    return true;
}

} // namespace

std::vector<ruvo::DiagDevice> DeviceCatalog::enumerate()
{
    std::vector<ruvo::DiagDevice> devices;
    CComPtr<ICreateDevEnum> enumerator;
    HRESULT hr = enumerator.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) throw HostError(L"Creating the system device enumerator", hr);

    CComPtr<IEnumMoniker> monikers;
    hr = enumerator->CreateClassEnumerator(CLSID_VideoInputDeviceCategory, &monikers, 0);
    if (FAILED(hr)) throw HostError(L"Listing the video capture devices", hr);
    // S_FALSE: the category is empty and there is no enumerator.
    if (hr != S_OK || !monikers) return devices;

    for (;;) {
        CComPtr<IMoniker> moniker;
        if (monikers->Next(1, &moniker, nullptr) != S_OK) break;
        CComPtr<IPropertyBag> bag;
        // A moniker without a property bag cannot be matched by the library either.
        if (FAILED(moniker->BindToStorage(nullptr, nullptr, IID_IPropertyBag, reinterpret_cast<void**>(&bag))))
            continue;
        devices.push_back(recordFor(moniker));
    }
    return devices;
}

ruvo::DiagDevice DeviceCatalog::recordFor(IMoniker* moniker)
{
    CComPtr<IPropertyBag> bag;
    moniker->BindToStorage(nullptr, nullptr, IID_IPropertyBag, reinterpret_cast<void**>(&bag));
    const std::wstring friendlyName = readText(bag, L"FriendlyName");
    const std::wstring devicePath = readText(bag, L"DevicePath");

    ruvo::DiagDevice device(kel::String(friendlyName), kel::String(readText(bag, L"Description")),
                            kel::String(locatorFromDevicePath(devicePath)), capabilitiesOf(moniker));
    device.setProperty("AnalogFriendlyName", ruvo::Value(kel::String(friendlyName)));
    device.setProperty("DevicePath", ruvo::Value(kel::String(devicePath)));
    return device;
}

ruvo::DeviceCapability DeviceCatalog::capabilitiesOf(IMoniker* moniker)
{
    ruvo::DeviceCapability capabilities = ruvo::DeviceCapability::VideoCapture();
    CComPtr<IBaseFilter> filter;
    if (FAILED(moniker->BindToObject(nullptr, nullptr, IID_IBaseFilter, reinterpret_cast<void**>(&filter))))
        return capabilities;
    long modes = 0;
    if (!findTuner(filter, modes)) {
        // A crossbar of inputs marks a capture card; webcams have none.
        CComQIPtr<IAMCrossbar> crossbar(filter);
        return crossbar ? capabilities : capabilities | ruvo::DeviceCapability::Webcam();
    }
    capabilities = capabilities | ruvo::DeviceCapability::AnalogTVTuner();
    if (modes & AMTUNER_MODE_FM_RADIO) capabilities = capabilities | ruvo::DeviceCapability::FMRadioTuner();
    return capabilities;
}

// A capture filter offers its tuner on the filter itself or on one of its pins.
bool DeviceCatalog::findTuner(IBaseFilter* filter, long& modes)
{
    if (tunerOf(filter, modes)) return true;
    CComPtr<IEnumPins> pins;
    if (FAILED(filter->EnumPins(&pins)) || !pins) return false;
    for (;;) {
        CComPtr<IPin> pin;
        if (pins->Next(1, &pin, nullptr) != S_OK) return false;
        if (tunerOf(pin, modes)) return true;
    }
}

std::wstring DeviceCatalog::locatorFromDevicePath(const std::wstring& devicePath)
{
    const size_t marker = devicePath.find(L"?\\");
    if (marker == std::wstring::npos || marker + 2 >= devicePath.size()) return std::wstring();
    const kel::String rest(devicePath.substr(marker + 2));
    return rest.toUpper().replace(kel::String(L"#"), kel::String(L"\\")).wstr();
}

} // namespace diag
} // namespace sorvane
