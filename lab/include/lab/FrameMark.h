// The picture every simulated camera delivers, and how a test reads it back.
//
// Rows are counted from the top of the picture as seen. The top kMarkCell rows are the mark
// band: cells kMarkCell pixels wide, the first white, the second black (sync), then the frame
// number's bits, least significant first, white for 1. Below the band: eight vertical colour
// bars (white, yellow, cyan, green, magenta, red, blue, black), down to the bottom quarter,
// which is a black strip for people: the frame number in large digits and a moving block.
// Sample the bars in the middle rows. Frame numbers start at 0 with
// every run of the graph; narrow pictures hold fewer bits (markBits), so their numbers wrap.
// Large black and white cells survive colour conversion and JPEG.
#pragma once

#include <windows.h>

#include "lab/MarkLayout.h"

namespace lab {

enum class PixelLayout { Rgb24, Rgb32, Yuy2, Uyvy };

// One delivered frame as a test sees it.
struct FrameView {
    const BYTE *data;
    long length;
    PixelLayout layout;
    int width;
    int height;
    bool bottomUp; // RGB rows stored last row first (positive biHeight)

    long stride() const
    {
        switch (layout) {
        case PixelLayout::Rgb24:
            return ((width * 3) + 3) & ~3L;
        case PixelLayout::Rgb32:
            return width * 4L;
        default:
            return width * 2L;
        }
    }

    bool complete() const { return data && length >= stride() * height; }

    const BYTE *row(int y) const
    {
        const bool rgb = layout == PixelLayout::Rgb24 || layout == PixelLayout::Rgb32;
        const int stored = rgb && bottomUp ? height - 1 - y : y;
        return data + stride() * stored;
    }

    // Luma 0..255 of the pixel at column x, row y (from the top).
    int luma(int x, int y) const
    {
        const BYTE *p = row(y);
        switch (layout) {
        case PixelLayout::Rgb24:
            p += x * 3;
            return (p[2] * 299 + p[1] * 587 + p[0] * 114) / 1000;
        case PixelLayout::Rgb32:
            p += x * 4;
            return (p[2] * 299 + p[1] * 587 + p[0] * 114) / 1000;
        case PixelLayout::Yuy2:
            return (p[x * 2] - 16) * 255 / 219;
        case PixelLayout::Uyvy:
            return (p[x * 2 + 1] - 16) * 255 / 219;
        }
        return 0;
    }

    // Colour of an RGB pixel (column x, row y from the top).
    Rgb rgb(int x, int y) const
    {
        const BYTE *p = row(y) + x * (layout == PixelLayout::Rgb32 ? 4 : 3);
        return Rgb{p[2], p[1], p[0]};
    }
};

// The number in mark band `band` (0: frame number, rows 0-15; 1: rows 16-31 ...).
inline bool readMarkBand(const FrameView &frame, int band, unsigned long &number)
{
    if (!frame.complete() || frame.height < (band + 1) * kMarkCell || markBits(frame.width) < 1)
        return false;
    const int y = band * kMarkCell + kMarkCell / 2;
    const auto cellLuma = [&](int cell) { return frame.luma(cell * kMarkCell + kMarkCell / 2, y); };
    if (cellLuma(0) < 160 || cellLuma(1) > 96)
        return false;
    number = 0;
    for (int bit = 0; bit < markBits(frame.width); ++bit) {
        if (cellLuma(kMarkSyncCells + bit) >= 128)
            number |= 1ul << bit;
    }
    return true;
}

// The frame number in a frame's mark band; false when the band is not there.
inline bool readFrameNumber(const FrameView &frame, unsigned long &number)
{
    return readMarkBand(frame, 0, number);
}

} // namespace lab
