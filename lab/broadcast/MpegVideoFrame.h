// One picture of the lab's MPEG-2 video elementary stream (Main profile, 4:2:0, 29.97 frames
// per second), which any MPEG-2 decoder decodes: a sequence header and its extension, an
// I-picture header (temporal reference = frame number mod 1024) and its coding extension, user
// data naming the channel, the program and the frame number, and the slices of the channel's
// picture (ChannelPicture, coded by IntraPictureCoder). Every picture starts a sequence, so a
// decoder may join the stream at any picture. The lab's own decoder reads the user data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "broadcast/FrameLabel.h"
#include "broadcast/IntraPictureCoder.h"

namespace lab {

class MpegVideoFrame {
public:
    std::vector<std::uint8_t> build(int width, int height, const FrameLabel &label);
    // Reads the label (and the sequence header's size when there is one) from elementary-stream
    // bytes; false when no lab user data is there.
    static bool read(const std::uint8_t *data, std::size_t length, FrameLabel &label, int &width, int &height);

private:
    IntraPictureCoder m_coder;
};

} // namespace lab
