// The picture a digital channel broadcasts, as a real decoder shows it: the lab picture's
// colour bars (lab/MarkLayout.h) under three mark bands, the frame number, the physical
// channel and the program (the bands the lab's own decoder paints, lab/ChannelMark.h).
// Its colours are read per pixel; positions outside the picture repeat its edge, as a coder
// padding the picture to whole macroblocks wants.
#pragma once

#include "broadcast/FrameLabel.h"
#include "lab/MarkLayout.h"

namespace lab {

class ChannelPicture {
public:
    // Only the rows above this one (the frame number's band) change from frame to frame.
    static const int kChangingRows = kMarkCell;

    ChannelPicture(int width, int height, const FrameLabel &label);

    int width() const { return m_width; }
    int height() const { return m_height; }
    const FrameLabel &label() const { return m_label; }
    Rgb at(int x, int y) const;

private:
    bool markWhite(int x, int band) const;

    const int m_width;
    const int m_height;
    const FrameLabel m_label;
    const unsigned long m_bands[3];
};

} // namespace lab
