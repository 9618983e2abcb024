// The layout of the lab picture that does not depend on Windows: the mark band's cells and the
// colour bars. lab/FrameMark.h describes the whole picture and how a test reads it; the
// broadcast's MPEG-2 encoder (portable, also built natively) paints the same marks.
#pragma once

#include <cstdint>

namespace lab {

const int kMarkCell = 16;
const int kMarkSyncCells = 2;
// The bands of a digital channel's picture below the frame number's (lab/ChannelMark.h).
const int kChannelBand = 1;
const int kProgramBand = 2;

inline int markBits(int width)
{
    const int bits = width / kMarkCell - kMarkSyncCells;
    return bits > 24 ? 24 : bits;
}

inline bool markCellWhite(unsigned long frame, int cell)
{
    if (cell < kMarkSyncCells)
        return cell == 0;
    return ((frame >> (cell - kMarkSyncCells)) & 1u) != 0;
}

struct Rgb {
    std::uint8_t r;
    std::uint8_t g;
    std::uint8_t b;
};

inline Rgb barColour(int x, int width)
{
    static const Rgb bars[8] = {{255, 255, 255}, {255, 255, 0}, {0, 255, 255}, {0, 255, 0},
                                {255, 0, 255},   {255, 0, 0},   {0, 0, 255},   {0, 0, 0}};
    return bars[(x * 8) / width];
}

} // namespace lab
