#include "DigitalDeviceCatalog.h"
#include "VariantOwner.h"

#include <DeviceIdParser.h>
#include <SdkGuids.h>

#include <atlbase.h>
#include <dshow.h>

namespace sorvane {
namespace diag {

namespace {

std::wstring readText(IPropertyBag* bag, const wchar_t* name)
{
    VariantOwner value;
    if (FAILED(bag->Read(name, value.get(), nullptr)) || value.value().vt != VT_BSTR || !value.value().bstrVal)
        return std::wstring();
    return std::wstring(value.value().bstrVal, SysStringLen(value.value().bstrVal));
}

// The locator the capture classes match a device path by, by the library's own rule.
std::wstring locatorFromDevicePath(const std::wstring& devicePath)
{
    DeviceIdParser::PathIdentity identity;
    DeviceIdParser::readDevicePath(kel::String(devicePath).toUpper(), identity);
    return identity.guid.wstr();
}

} // namespace

std::vector<ruvo::DiagDevice> DigitalDeviceCatalog::enumerate()
{
    std::vector<ruvo::DiagDevice> devices;
    CComPtr<ICreateDevEnum> enumerator;
    if (FAILED(enumerator.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER))) return devices;
    CComPtr<IEnumMoniker> monikers;
    // S_FALSE: the category is empty and there is no enumerator.
    if (enumerator->CreateClassEnumerator(KSCATEGORY_BDA_NETWORK_TUNER, &monikers, 0) != S_OK || !monikers)
        return devices;
    for (;;) {
        CComPtr<IMoniker> moniker;
        if (monikers->Next(1, &moniker, nullptr) != S_OK) break;
        CComPtr<IPropertyBag> bag;
        if (FAILED(moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag))) || !bag) continue;
        const std::wstring name = readText(bag, L"FriendlyName");
        const std::wstring path = readText(bag, L"DevicePath");
        const std::wstring locator = locatorFromDevicePath(path);
        ruvo::DiagDevice device(kel::String(name), kel::String(readText(bag, L"Description")), kel::String(locator),
                                ruvo::DeviceCapability::VideoCapture() | ruvo::DeviceCapability::DigitalTVTuner());
        device.setProperty("DigitalFriendlyName", ruvo::Value(kel::String(name)));
        device.setProperty("DeviceLocator", ruvo::Value(kel::String(locator)));
        device.setProperty("DevicePath", ruvo::Value(kel::String(path)));
        devices.push_back(device);
    }
    return devices;
}

} // namespace diag
} // namespace sorvane
