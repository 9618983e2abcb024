// Frames a webcam capture returned, with what the host needs to read them.
#pragma once

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

struct CapturedFrames {
    enum Layout { UNKNOWN, BGR24, YUY2, UYVY, JPEG };

    CapturedFrames() : width(0), height(0), layout(UNKNOWN), bottomUp(false) {}

    // The library's frame description: format 1 is RGB24 (or MJPG when isJpeg), 2 YUY2, 3 UYVY.
    static Layout layoutOf(int format, bool isJpeg)
    {
        switch (format) {
        case 1:
            return isJpeg ? JPEG : BGR24;
        case 2:
            return YUY2;
        case 3:
            return UYVY;
        default:
            return UNKNOWN;
        }
    }

    static const wchar_t *layoutName(Layout layout)
    {
        static const wchar_t *const kNames[] = {L"unknown", L"RGB24", L"YUY2", L"UYVY", L"MJPG"};
        return kNames[layout];
    }

    int width;
    int height;
    Layout layout;
    // RGB24 rows stored bottom-up, as a positive biHeight says.
    bool bottomUp;
    std::vector<boost::shared_ptr<unsigned char>> buffers;
};

} // namespace diag
} // namespace sorvane
