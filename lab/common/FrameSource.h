// What a capture pin asks of its device for every frame.
#pragma once

#include <windows.h>

#include "common/VideoFormat.h"

namespace lab {

class FrameSource {
public:
    virtual ~FrameSource() = default;
    // Writes frame number `frame` in `format` into buffer; returns the bytes written, 0 on failure.
    virtual long paintFrame(const VideoFormat &format, unsigned long frame, BYTE *buffer, long capacity) = 0;
};

} // namespace lab
