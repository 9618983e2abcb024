// The framework's record of a lab device as the host hands it to a test module: the library's
// own discovery (CaptureDevice::enumerateDevices) finds the device, the host's translation
// (diag::DeviceRecords) makes its record. For the tests and the benchmarks alike.
//
// Discovery binds every device's filter, and the lab journals each binding: it runs once a
// program, at the first call. A test suite that reads journals calls discover() before its
// first test clears them (SetUpTestSuite), so that its tests see only what they did.
#pragma once

#include <CaptureDevice.h>
#include <ruvo/DiagDevice.h>

namespace sorvane {
namespace test {

class LabDeviceRecord {
public:
    // Discovers the system's capture devices, unless this program did already.
    static void discover();
    // The record of the device one of whose filters has this friendly name, with the
    // capabilities the host gives it or with these; an empty record (no name) when discovery
    // found no such device.
    static ruvo::DiagDevice find(const wchar_t *friendlyName);
    static ruvo::DiagDevice find(const wchar_t *friendlyName, const ruvo::DeviceCapability &capabilities);

private:
    static const kel::Array<CaptureDevice> &devices();
    static bool hasFilterNamed(const CaptureDevice &device, const kel::String &friendlyName);
};

} // namespace test
} // namespace sorvane
