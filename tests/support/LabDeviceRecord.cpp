#include "LabDeviceRecord.h"
#include "LabLocator.h"

#include <ScopedVariant.h>
#include <SdkGuids.h>

#include <atlbase.h>
#include <dshow.h>

namespace sorvane {
namespace test {

kel::String LabDeviceRecord::bagText(IPropertyBag *bag, const wchar_t *name)
{
    ScopedVariant value;
    if (FAILED(bag->Read(name, value.get(), nullptr)))
        return kel::String();
    return value.text();
}

ruvo::DiagDevice LabDeviceRecord::find(const GUID &category, const wchar_t *friendlyName,
                                       const ruvo::DeviceCapability &capabilities)
{
    const HRESULT init = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ruvo::DiagDevice found;
    {
        CComPtr<ICreateDevEnum> devices;
        CComPtr<IEnumMoniker> monikers;
        if (SUCCEEDED(devices.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER)) &&
            devices->CreateClassEnumerator(category, &monikers, 0) == S_OK) {
            for (CComPtr<IMoniker> moniker; monikers->Next(1, &moniker, nullptr) == S_OK; moniker.Release()) {
                CComPtr<IPropertyBag> bag;
                if (FAILED(moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag))) ||
                    bagText(bag, L"FriendlyName") != kel::String(friendlyName))
                    continue;
                found = ruvo::DiagDevice(kel::String(friendlyName), bagText(bag, L"Description"),
                                         locatorOf(bagText(bag, L"DevicePath")), capabilities);
                break;
            }
        }
    }
    if (SUCCEEDED(init))
        CoUninitialize();
    return found;
}

ruvo::DiagDevice LabDeviceRecord::analog(const wchar_t *friendlyName, const ruvo::DeviceCapability &capabilities)
{
    return named(CLSID_VideoInputDeviceCategory, friendlyName, capabilities, "AnalogFriendlyName");
}

ruvo::DiagDevice LabDeviceRecord::digital(const wchar_t *friendlyName, const ruvo::DeviceCapability &capabilities)
{
    return named(KSCATEGORY_BDA_NETWORK_TUNER, friendlyName, capabilities, "DigitalFriendlyName");
}

ruvo::DiagDevice LabDeviceRecord::named(const GUID &category, const wchar_t *friendlyName,
                                        const ruvo::DeviceCapability &capabilities, const char *property)
{
    ruvo::DiagDevice record = find(category, friendlyName, capabilities);
    if (!record.name().isEmpty())
        record.setProperty(property, ruvo::Value(kel::String(friendlyName)));
    return record;
}

} // namespace test
} // namespace sorvane
