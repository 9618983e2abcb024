// One video capability of a simulated device, as the description file writes it:
//   "YUY2 640x480 30"            subtype, size, frames per second
//   "RGB24 320x240 15 top-down"  RGB24 rows stored top-down (negative biHeight)
// Subtypes: RGB24, RGB32, YUY2, UYVY, MJPG.
#pragma once

#include <windows.h>
#include <dshow.h>
#include <string>

#include "common/MediaType.h"

namespace lab {

struct VideoFormat {
    GUID subType = GUID_NULL;
    LONG width = 0;
    LONG height = 0;
    bool topDown = false;
    double fps = 30.0;

    static bool parse(const std::wstring &text, VideoFormat &format);
    // The lab's description of a media type ("YUY2 640x480 30fps"), for journals and errors.
    static std::wstring describe(const AM_MEDIA_TYPE &type);
    static const wchar_t *subTypeName(const GUID &subType);

    REFERENCE_TIME frameTime() const;
    WORD bitCount() const;
    DWORD compression() const;
    bool compressed() const;
    // Bytes of one uncompressed frame; for MJPG, room for the largest frame the lab encodes.
    long frameBytes() const;

    MediaType mediaType() const;
    VIDEO_STREAM_CONFIG_CAPS caps() const;
    // Same subtype and frame geometry (including row order); the frame rate is free.
    bool matches(const AM_MEDIA_TYPE &type) const;
    std::wstring text() const;
};

} // namespace lab
