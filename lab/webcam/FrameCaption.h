// The part of the lab picture meant for a person: below the colour bars, a black strip with
// the frame number in large digits and a white block that moves a step every frame, so a
// contact sheet or a preview shows at a glance that frames advance.
#pragma once

#include <windows.h>

namespace lab {

class FrameCaption {
public:
    // First row of the strip: the bottom quarter of the picture.
    static int top(int height) { return height - height / 4; }
    // Paints the strip of frame `frame` into an RGB24 top-down picture without row padding.
    static void paint(BYTE *picture, int width, int height, unsigned long frame);

private:
    static void fill(BYTE *picture, int width, int left, int top, int right, int bottom, BYTE level);
    static void paintDigit(BYTE *picture, int width, int digit, int left, int top, int unit);
};

} // namespace lab
