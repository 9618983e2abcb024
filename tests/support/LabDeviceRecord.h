// The framework's record of a lab device, as a test module's enumerator hands it over: found by
// friendly name among the monikers of a device category, its locator read from the device path
// by the library's own rule. For the tests and the benchmarks alike.
#pragma once

#include <ruvo/DiagDevice.h>

#include <windows.h>

namespace sorvane {
namespace test {

class LabDeviceRecord {
public:
    // The record with these capabilities; an empty one (no name) when no moniker of the category
    // has that friendly name.
    static ruvo::DiagDevice find(const GUID &category, const wchar_t *friendlyName,
                                 const ruvo::DeviceCapability &capabilities);
    // A video input device (webcam, analog card), named by "AnalogFriendlyName" as well.
    static ruvo::DiagDevice analog(const wchar_t *friendlyName, const ruvo::DeviceCapability &capabilities);
    // A BDA tuner, named by "DigitalFriendlyName" as well.
    static ruvo::DiagDevice digital(const wchar_t *friendlyName, const ruvo::DeviceCapability &capabilities);

private:
    static kel::String bagText(IPropertyBag *bag, const wchar_t *name);
    static ruvo::DiagDevice named(const GUID &category, const wchar_t *friendlyName,
                                  const ruvo::DeviceCapability &capabilities, const char *property);
};

} // namespace test
} // namespace sorvane
