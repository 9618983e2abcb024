// Turns a captured raw frame (RGB24, YUY2 or UYVY, as DirectShow lays them out) into a
// top-down BGR picture.
#pragma once

#include "CapturedFrames.h"
#include "Image.h"

#include <cstddef>

namespace sorvane {
namespace diag {

class FrameConverter {
public:
    static bool isRaw(CapturedFrames::Layout layout);
    // Bytes of one raw frame: rows padded to four bytes, as in a DIB.
    static size_t frameBytes(CapturedFrames::Layout layout, int width, int height);
    static Image toImage(const unsigned char *frame, CapturedFrames::Layout layout, int width, int height,
                         bool bottomUp);

private:
    static void copyBgrRow(const unsigned char *source, unsigned char *target, int width);
    // YUY2 is Y0 U Y1 V, UYVY is U Y0 V Y1: two pixels in four bytes, BT.601 video range.
    static void convertYuvRow(const unsigned char *source, unsigned char *target, int width, bool yFirst);
};

} // namespace diag
} // namespace sorvane
