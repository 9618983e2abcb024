// One picture of the lab's MPEG-2 video elementary stream. It carries no coded macroblocks: a
// sequence header (picture size, 29.97 frames per second), a picture header (I picture,
// temporal reference) and user data naming the channel, the program and the frame number,
// which the lab's decoder reads to paint the lab picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lab {

struct FrameLabel {
    int channel = 0;
    int program = 0;
    unsigned long frame = 0;
};

class MpegVideoFrame {
public:
    static std::vector<std::uint8_t> build(int width, int height, const FrameLabel &label);
    // Reads the label (and the sequence header's size when there is one) from elementary-stream
    // bytes; false when no lab user data is there.
    static bool read(const std::uint8_t *data, std::size_t length, FrameLabel &label, int &width, int &height);
};

} // namespace lab
