// One capability a video capture pin offers through IAMStreamConfig, as a person reads it.
#pragma once

#include <string>

namespace sorvane {
namespace diag {

struct StreamCapability {
    StreamCapability() : width(0), height(0), fps(0), minFps(0), maxFps(0) {}

    // "YUY2", "MJPG", "RGB24" ..., the FOURCC or the GUID of other subtypes.
    std::wstring subtype;
    int width;
    int height;
    // The rate the capability's media type asks for, and the range the device allows.
    double fps;
    double minFps;
    double maxFps;
};

} // namespace diag
} // namespace sorvane
