// The framework's record of a lab device, found as a test module's enumerator finds it: by
// friendly name among the monikers of a device category.
#pragma once

#include <ruvo/DiagDevice.h>

#include <windows.h>

namespace sorvane {
namespace bench {

class BenchDevice {
public:
    // False when no device of `category` has that name. The record's locator is read from the
    // device path by the library's own rule.
    static bool find(const GUID &category, const wchar_t *friendlyName, const ruvo::DeviceCapability &capabilities,
                     ruvo::DiagDevice &device);
};

} // namespace bench
} // namespace sorvane
