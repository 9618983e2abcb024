// How big a recording will be, said before it starts: the library records the capture pin's
// stream as it comes, three seconds of it, so a 1080p camera at 60 frames a second fills
// hundreds of megabytes.
#pragma once

#include <ruvo/DiagDevice.h>

#include <cstdint>
#include <string>

namespace sorvane {
namespace diag {

class RecordingSize {
public:
    // "1920x1080 YUY2 at 60 fps: about 746 MB" for the device's first stream capability, or
    // empty when its size cannot be told (no capabilities, a compressed format).
    static std::wstring estimate(const ruvo::DiagDevice &device, double seconds);
    // "746 MB", "12 kB", "512 bytes".
    static std::wstring bytesText(int64_t bytes);

private:
    // Bytes a pixel of an uncompressed subtype takes; 0 for the rest.
    static double bytesPerPixel(const std::wstring &subtype);
};

} // namespace diag
} // namespace sorvane
