#include "webcam/FramePainter.h"

#include <cstring>

#include <uuids.h>

#include "lab/FrameMark.h"
#include "webcam/FrameCaption.h"

namespace lab {

namespace {

// BT.601 studio range, as capture drivers deliver YUV.
BYTE lumaOf(const BYTE *rgb)
{
    return static_cast<BYTE>(16 + (66 * rgb[0] + 129 * rgb[1] + 25 * rgb[2] + 128) / 256);
}
BYTE blueDifference(const BYTE *rgb)
{
    return static_cast<BYTE>(128 + (-38 * rgb[0] - 74 * rgb[1] + 112 * rgb[2] + 128) / 256);
}
BYTE redDifference(const BYTE *rgb)
{
    return static_cast<BYTE>(128 + (112 * rgb[0] - 94 * rgb[1] - 18 * rgb[2] + 128) / 256);
}

} // namespace

long FramePainter::paint(const VideoFormat &format, unsigned long frame, BYTE *buffer, long capacity, bool flat)
{
    prepare(format, flat);
    if (!flat) {
        paintBand(frame);
        FrameCaption::paint(m_picture.data(), format.width, format.height, frame);
    }
    if (format.compressed()) {
        const std::vector<BYTE> &jpeg = m_jpeg.encode(m_picture.data(), format.width, format.height);
        if (static_cast<long>(jpeg.size()) > capacity)
            return 0;
        std::memcpy(buffer, jpeg.data(), jpeg.size());
        return static_cast<long>(jpeg.size());
    }
    const long size = static_cast<long>(m_still.size());
    if (size > capacity)
        return 0;
    std::memcpy(buffer, m_still.data(), m_still.size());
    if (!flat) {
        const int bandRows = kMarkCell < format.height ? kMarkCell : format.height;
        convertRows(0, bandRows, buffer);
        const int captionTop = FrameCaption::top(format.height);
        convertRows(captionTop > bandRows ? captionTop : bandRows, format.height, buffer);
    }
    return size;
}

void FramePainter::prepare(const VideoFormat &format, bool flat)
{
    if (m_prepared == format.text() && m_flat == flat)
        return;
    m_format = format;
    m_prepared = format.text();
    m_flat = flat;
    paintStill(flat);
    m_still.clear();
    if (!format.compressed()) {
        m_still.assign(static_cast<size_t>(format.frameBytes()), 0);
        convertRows(0, format.height, m_still.data());
    }
}

void FramePainter::paintStill(bool flat)
{
    // An even mid-tone that no format conversion turns into black.
    static const Rgb kFlat = {96, 144, 176};
    const size_t width = static_cast<size_t>(m_format.width);
    m_picture.assign(width * static_cast<size_t>(m_format.height) * 3, 0);
    for (LONG y = 0; y < m_format.height; ++y) {
        BYTE *row = m_picture.data() + width * 3 * static_cast<size_t>(y);
        for (LONG x = 0; x < m_format.width; ++x) {
            const Rgb colour = flat ? kFlat : barColour(x, m_format.width);
            row[x * 3] = colour.r;
            row[x * 3 + 1] = colour.g;
            row[x * 3 + 2] = colour.b;
        }
    }
}

void FramePainter::paintBand(unsigned long frame)
{
    const int rows = kMarkCell < m_format.height ? kMarkCell : m_format.height;
    const size_t width = static_cast<size_t>(m_format.width);
    for (int y = 0; y < rows; ++y) {
        BYTE *row = m_picture.data() + width * 3 * static_cast<size_t>(y);
        for (LONG x = 0; x < m_format.width; ++x) {
            const int cell = x / kMarkCell;
            const bool white = cell < kMarkSyncCells + markBits(m_format.width) && markCellWhite(frame, cell);
            std::memset(row + x * 3, white ? 255 : 0, 3);
        }
    }
}

void FramePainter::convertRows(int first, int last, BYTE *target) const
{
    const LONG width = m_format.width;
    const long stride = m_format.frameBytes() / m_format.height;
    const bool yuy2 = IsEqualGUID(m_format.subType, MEDIASUBTYPE_YUY2) != FALSE;
    const bool uyvy = IsEqualGUID(m_format.subType, MEDIASUBTYPE_UYVY) != FALSE;
    const bool rgb32 = IsEqualGUID(m_format.subType, MEDIASUBTYPE_RGB32) != FALSE;
    for (int y = first; y < last; ++y) {
        const BYTE *source = m_picture.data() + static_cast<size_t>(width) * 3 * static_cast<size_t>(y);
        // RGB is stored bottom-up unless the format says top-down; YUV is always top-down.
        const int stored = (yuy2 || uyvy || m_format.topDown) ? y : m_format.height - 1 - y;
        BYTE *row = target + stride * stored;
        if (yuy2 || uyvy) {
            for (LONG x = 0; x < width; x += 2) {
                const BYTE *left = source + x * 3;
                const BYTE *right = left + 3;
                const BYTE u = static_cast<BYTE>((blueDifference(left) + blueDifference(right) + 1) / 2);
                const BYTE v = static_cast<BYTE>((redDifference(left) + redDifference(right) + 1) / 2);
                BYTE *out = row + x * 2;
                if (yuy2) {
                    out[0] = lumaOf(left), out[1] = u, out[2] = lumaOf(right), out[3] = v;
                } else {
                    out[0] = u, out[1] = lumaOf(left), out[2] = v, out[3] = lumaOf(right);
                }
            }
            continue;
        }
        const int pixelBytes = rgb32 ? 4 : 3;
        for (LONG x = 0; x < width; ++x) {
            BYTE *out = row + x * pixelBytes;
            out[0] = source[x * 3 + 2];
            out[1] = source[x * 3 + 1];
            out[2] = source[x * 3];
            if (rgb32)
                out[3] = 0xFF;
        }
    }
}

} // namespace lab
