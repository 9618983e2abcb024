// What one picture of a digital channel shows: the physical channel, the program and the
// frame number.
#pragma once

namespace lab {

struct FrameLabel {
    int channel = 0;
    int program = 0;
    unsigned long frame = 0;
};

} // namespace lab
