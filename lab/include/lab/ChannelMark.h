// What the lab's MPEG-2 video decoder adds to the lab picture (lab/FrameMark.h) of a digital
// channel: below the frame-number band, a band holding the physical channel number and a band
// holding the program number, in the frame band's cells (white, black, then the bits, least
// significant first, white for 1).
#pragma once

#include "lab/FrameMark.h"

namespace lab {

inline bool readChannelNumber(const FrameView &frame, unsigned long &channel)
{
    return readMarkBand(frame, kChannelBand, channel);
}

inline bool readProgramNumber(const FrameView &frame, unsigned long &program)
{
    return readMarkBand(frame, kProgramBand, program);
}

} // namespace lab
