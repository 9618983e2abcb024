// What the lab's MPEG-2 video decoder adds to the lab picture (lab/FrameMark.h) of a digital
// channel: below the frame-number band, a band holding the physical channel number and a band
// holding the program number, in the frame band's cells (white, black, then the bits, least
// significant first, white for 1).
#pragma once

#include "lab/FrameMark.h"

namespace lab {

const int kChannelBand = 1;
const int kProgramBand = 2;

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

inline bool readChannelNumber(const FrameView &frame, unsigned long &channel)
{
    return readMarkBand(frame, kChannelBand, channel);
}

inline bool readProgramNumber(const FrameView &frame, unsigned long &program)
{
    return readMarkBand(frame, kProgramBand, program);
}

} // namespace lab
