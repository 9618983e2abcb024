#include "LabDeviceRecord.h"

#include <sorvane-diag/DeviceRecords.h>

#include <objbase.h>

namespace sorvane {
namespace test {

const kel::Array<CaptureDevice> &LabDeviceRecord::devices()
{
    static const kel::Array<CaptureDevice> found = [] {
        const HRESULT init = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        kel::Array<CaptureDevice> devices;
        CaptureDevice::enumerateDevices(devices);
        if (SUCCEEDED(init))
            CoUninitialize();
        return devices;
    }();
    return found;
}

void LabDeviceRecord::discover()
{
    devices();
}

bool LabDeviceRecord::hasFilterNamed(const CaptureDevice &device, const kel::String &friendlyName)
{
    for (int i = 0; i < device.monikers().size(); ++i) {
        if (device.monikers()[i].filterName() == friendlyName)
            return true;
    }
    return false;
}

ruvo::DiagDevice LabDeviceRecord::find(const wchar_t *friendlyName)
{
    const kel::Array<CaptureDevice> &all = devices();
    for (int i = 0; i < all.size(); ++i) {
        if (hasFilterNamed(all[i], kel::String(friendlyName)))
            return diag::DeviceRecords::recordFor(all[i]);
    }
    return ruvo::DiagDevice();
}

ruvo::DiagDevice LabDeviceRecord::find(const wchar_t *friendlyName, const ruvo::DeviceCapability &capabilities)
{
    const ruvo::DiagDevice found = find(friendlyName);
    if (found.name().isEmpty())
        return found;
    ruvo::DiagDevice record(found.name(), found.description(), found.osLocator(), capabilities);
    for (int i = 0; i < found.properties().size(); ++i)
        record.setProperty(found.properties().keyAt(i), found.properties().valueAt(i));
    return record;
}

} // namespace test
} // namespace sorvane
