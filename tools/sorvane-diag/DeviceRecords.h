// The framework's device records for the capture devices the library enumerates, as a
// framework's own enumerator would hand them to a test module. The library decides what a
// device is and where it sits; the host only translates.
#pragma once

#include <CaptureDevice.h>
#include <ruvo/DiagDevice.h>

namespace sorvane {
namespace diag {

class DeviceRecords {
public:
    // Name and "AnalogFriendlyName" from the analog capture filter, the locator from the
    // device path the library parsed (what the capture classes match a moniker by).
    static ruvo::DiagDevice recordFor(const CaptureDevice &device);

private:
    // VideoCapture for an analog capture filter; AnalogTVTuner and FMRadioTuner for an analog
    // TV tuner (the probe does not tell FM apart: a tuner without it fails the fm test with
    // the library's own result); DigitalTVTuner for a BDA tuner; Webcam for a webcam.
    static ruvo::DeviceCapability capabilitiesOf(const CaptureDevice &device);
};

} // namespace diag
} // namespace sorvane
