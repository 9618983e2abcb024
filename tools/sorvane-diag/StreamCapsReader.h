// Reads a video capture device's stream capabilities (IAMStreamConfig::GetStreamCaps of its
// capture pin), as any capture tool lists them. The device is found among the video input
// devices by its friendly name and device path, as the library finds the device it captures
// from: two cameras of one model share a name but never a path.
#pragma once

#include "StreamCapability.h"

#include <ruvo/DiagDevice.h>

#include <atlbase.h>
#include <dshow.h>

#include <functional>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class StreamCapsReader {
public:
    // False with `problem` set ("no capture filter of that name", "binding failed: ...").
    static bool read(const std::wstring &name, const std::wstring &devicePath,
                     std::vector<StreamCapability> &capabilities, std::wstring &problem);
    // The same for a framework record, whose locator is the identifier the library reads from
    // the device path.
    static bool read(const ruvo::DiagDevice &device, std::vector<StreamCapability> &capabilities,
                     std::wstring &problem);
    static std::wstring subtypeName(const GUID &subtype);

private:
    using MonikerTest = std::function<bool(IMoniker *)>;
    static CComPtr<IMoniker> findMoniker(const MonikerTest &wanted);
    static bool readFrom(IMoniker *moniker, std::vector<StreamCapability> &capabilities, std::wstring &problem);
    static CComPtr<IAMStreamConfig> captureConfig(IBaseFilter *filter);
    static bool isCapturePin(IPin *pin);
    static bool describe(const AM_MEDIA_TYPE &type, const VIDEO_STREAM_CONFIG_CAPS &caps, StreamCapability &capability);
};

} // namespace diag
} // namespace sorvane
