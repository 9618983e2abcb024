#include "RecordedFrames.h"
#include "AviFile.h"
#include "FrameConverter.h"

#include <boost/checked_delete.hpp>

#include <cstring>

namespace sorvane {
namespace diag {

namespace {

CapturedFrames::Layout layoutOf(const BITMAPINFOHEADER &format)
{
    switch (format.biCompression) {
    case BI_RGB:
        return format.biBitCount == 24 ? CapturedFrames::BGR24 : CapturedFrames::UNKNOWN;
    case MAKEFOURCC('Y', 'U', 'Y', '2'):
        return CapturedFrames::YUY2;
    case MAKEFOURCC('U', 'Y', 'V', 'Y'):
        return CapturedFrames::UYVY;
    case MAKEFOURCC('M', 'J', 'P', 'G'):
        return CapturedFrames::JPEG;
    default:
        return CapturedFrames::UNKNOWN;
    }
}

} // namespace

CapturedFrames RecordedFrames::read(const std::wstring &path, unsigned limit, std::wstring &problem)
{
    CapturedFrames frames;
    const AviFile avi(path);
    if (!avi.valid()) {
        problem = std::wstring(avi.problem().begin(), avi.problem().end());
        return frames;
    }
    const BITMAPINFOHEADER &format = avi.format();
    const CapturedFrames::Layout layout = layoutOf(format);
    if (layout == CapturedFrames::UNKNOWN || format.biWidth <= 0 || format.biHeight == 0) {
        problem = L"a video format the host does not read";
        return frames;
    }
    frames.layout = layout;
    frames.width = format.biWidth;
    frames.height = format.biHeight < 0 ? -format.biHeight : format.biHeight;
    frames.bottomUp = layout == CapturedFrames::BGR24 && format.biHeight > 0;
    // A raw frame shorter than its format says is a dropped frame's empty chunk: left out.
    const size_t rawBytes =
        FrameConverter::isRaw(layout) ? FrameConverter::frameBytes(layout, frames.width, frames.height) : 1;
    const int first = avi.frameCount() > static_cast<int>(limit) ? avi.frameCount() - static_cast<int>(limit) : 0;
    for (int i = first; i < avi.frameCount(); ++i) {
        const size_t length = static_cast<size_t>(avi.frameLength(i));
        if (length < rawBytes)
            continue;
        boost::shared_ptr<unsigned char> copy(new unsigned char[length], boost::checked_array_deleter<unsigned char>());
        std::memcpy(copy.get(), avi.frameData(i), length);
        frames.buffers.push_back(copy);
    }
    if (frames.buffers.empty())
        problem = L"it holds no whole video frame";
    return frames;
}

} // namespace diag
} // namespace sorvane
