#include "FrameConverter.h"

#include <cstring>

namespace sorvane {
namespace diag {

namespace {

int bitsPerPixel(CapturedFrames::Layout layout)
{
    return layout == CapturedFrames::BGR24 ? 24 : 16;
}

size_t rowBytes(CapturedFrames::Layout layout, int width)
{
    return ((static_cast<size_t>(width) * bitsPerPixel(layout) + 31) / 32) * 4;
}

unsigned char clampByte(int value)
{
    return static_cast<unsigned char>(value < 0 ? 0 : (value > 255 ? 255 : value));
}

void writePixel(unsigned char *target, int y, int u, int v)
{
    const int c = 298 * (y - 16);
    const int d = u - 128;
    const int e = v - 128;
    target[0] = clampByte((c + 516 * d + 128) >> 8);
    target[1] = clampByte((c - 100 * d - 208 * e + 128) >> 8);
    target[2] = clampByte((c + 409 * e + 128) >> 8);
}

} // namespace

bool FrameConverter::isRaw(CapturedFrames::Layout layout)
{
    return layout == CapturedFrames::BGR24 || layout == CapturedFrames::YUY2 || layout == CapturedFrames::UYVY;
}

size_t FrameConverter::frameBytes(CapturedFrames::Layout layout, int width, int height)
{
    return rowBytes(layout, width) * static_cast<size_t>(height);
}

Image FrameConverter::toImage(const unsigned char *frame, CapturedFrames::Layout layout, int width, int height,
                              bool bottomUp)
{
    Image image(width, height);
    const size_t sourceStride = rowBytes(layout, width);
    for (int y = 0; y < height; ++y) {
        const int sourceRow = bottomUp ? height - 1 - y : y;
        const unsigned char *source = frame + sourceStride * sourceRow;
        if (layout == CapturedFrames::BGR24)
            copyBgrRow(source, image.row(y), width);
        else
            convertYuvRow(source, image.row(y), width, layout == CapturedFrames::YUY2);
    }
    return image;
}

void FrameConverter::copyBgrRow(const unsigned char *source, unsigned char *target, int width)
{
    memcpy(target, source, static_cast<size_t>(width) * 3);
}

void FrameConverter::convertYuvRow(const unsigned char *source, unsigned char *target, int width, bool yFirst)
{
    for (int x = 0; x < width; x += 2) {
        const unsigned char *pair = source + x * 2;
        const int y0 = yFirst ? pair[0] : pair[1];
        const int u = yFirst ? pair[1] : pair[0];
        const int y1 = yFirst ? pair[2] : pair[3];
        const int v = yFirst ? pair[3] : pair[2];
        writePixel(target + x * 3, y0, u, v);
        if (x + 1 < width)
            writePixel(target + (x + 1) * 3, y1, u, v);
    }
}

} // namespace diag
} // namespace sorvane
