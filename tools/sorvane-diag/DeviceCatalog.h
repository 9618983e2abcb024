// The framework's device records for the system's video capture devices, built from the
// capture monikers the system device enumerator lists, as a framework's own enumerator
// would hand them to a test module.
#pragma once

#include <ruvo/DiagDevice.h>

#include <string>
#include <vector>

struct IMoniker;
struct IBaseFilter;

namespace sorvane {
namespace diag {

class DeviceCatalog {
public:
    // In the enumerator's order. COM must be initialised on the calling thread.
    static std::vector<ruvo::DiagDevice> enumerate();
    // "\\?\usb#vid_1234&pid_0001#cam0#{guid}" gives "USB\VID_1234&PID_0001\CAM0\{GUID}":
    // the text after "?\", upper-cased, "#" turned into "\". Empty without "?\".
    static std::wstring locatorFromDevicePath(const std::wstring& devicePath);

private:
    static ruvo::DiagDevice recordFor(IMoniker* moniker);
    // VideoCapture, and AnalogTVTuner (plus FMRadioTuner when its modes include FM) when
    // the filter has a TV tuner, Webcam otherwise; VideoCapture alone when it cannot be bound.
    static ruvo::DeviceCapability capabilitiesOf(IMoniker* moniker);
    static bool findTuner(IBaseFilter* filter, long& modes);
};

} // namespace diag
} // namespace sorvane
