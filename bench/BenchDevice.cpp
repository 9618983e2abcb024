#include "BenchDevice.h"

#include <LabLocator.h>
#include <ScopedVariant.h>

#include <atlbase.h>
#include <dshow.h>

namespace sorvane {
namespace bench {

namespace {

kel::String bagText(IPropertyBag *bag, const wchar_t *name)
{
    ScopedVariant value;
    if (FAILED(bag->Read(name, value.get(), nullptr)))
        return kel::String();
    return value.text();
}

} // namespace

bool BenchDevice::find(const GUID &category, const wchar_t *friendlyName, const ruvo::DeviceCapability &capabilities,
                       ruvo::DiagDevice &device)
{
    CComPtr<ICreateDevEnum> devices;
    CComPtr<IEnumMoniker> monikers;
    if (FAILED(devices.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER)) ||
        devices->CreateClassEnumerator(category, &monikers, 0) != S_OK)
        return false;
    CComPtr<IMoniker> moniker;
    while (monikers->Next(1, &moniker, nullptr) == S_OK) {
        CComPtr<IPropertyBag> bag;
        moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag));
        moniker.Release();
        if (!bag || bagText(bag, L"FriendlyName") != kel::String(friendlyName))
            continue;
        device = ruvo::DiagDevice(kel::String(friendlyName), bagText(bag, L"Description"),
                                  test::locatorOf(bagText(bag, L"DevicePath")), capabilities);
        return true;
    }
    return false;
}

} // namespace bench
} // namespace sorvane
