#include "webcam/FrameCaption.h"

#include <cstring>
#include <string>

namespace lab {

namespace {

// Digits 0-9 on a 5x7 grid, one row a byte, the leftmost column the highest of five bits.
const BYTE kGlyphs[10][7] = {
    {0x0E, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0E}, {0x04, 0x0C, 0x04, 0x04, 0x04, 0x04, 0x0E},
    {0x0E, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1F}, {0x1F, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0E},
    {0x02, 0x06, 0x0A, 0x12, 0x1F, 0x02, 0x02}, {0x1F, 0x10, 0x1E, 0x01, 0x01, 0x11, 0x0E},
    {0x06, 0x08, 0x10, 0x1E, 0x11, 0x11, 0x0E}, {0x1F, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08},
    {0x0E, 0x11, 0x11, 0x0E, 0x11, 0x11, 0x0E}, {0x0E, 0x11, 0x11, 0x0F, 0x01, 0x02, 0x0C},
};

// Frames the moving block takes to cross the picture.
const int kSweepFrames = 16;

} // namespace

void FrameCaption::fill(BYTE *picture, int width, int left, int top, int right, int bottom, BYTE level)
{
    if (right > width)
        right = width;
    for (int y = top; y < bottom; ++y) {
        if (left < right)
            std::memset(picture + (static_cast<size_t>(y) * width + left) * 3, level,
                        static_cast<size_t>(right - left) * 3);
    }
}

void FrameCaption::paintDigit(BYTE *picture, int width, int digit, int left, int top, int unit)
{
    for (int row = 0; row < 7; ++row) {
        for (int column = 0; column < 5; ++column) {
            if (kGlyphs[digit][row] & (0x10 >> column))
                fill(picture, width, left + column * unit, top + row * unit, left + (column + 1) * unit,
                     top + (row + 1) * unit, 255);
        }
    }
}

void FrameCaption::paint(BYTE *picture, int width, int height, unsigned long frame)
{
    const int first = top(height);
    const int strip = height - first;
    // Seven units of digits, a gap, two units of moving block, a margin: eleven units.
    const int unit = strip / 11;
    fill(picture, width, 0, first, width, height, 0);
    if (unit < 1)
        return;
    const std::wstring number = std::to_wstring(frame);
    for (size_t i = 0; i < number.size(); ++i)
        paintDigit(picture, width, number[i] - L'0', unit + static_cast<int>(i) * 6 * unit, first + unit, unit);
    const int block = 4 * unit;
    const int travel = width - block;
    const int left = travel > 0 ? static_cast<int>((frame % kSweepFrames) * travel / (kSweepFrames - 1)) : 0;
    fill(picture, width, left, first + 9 * unit, left + block, first + 11 * unit, 255);
}

} // namespace lab
