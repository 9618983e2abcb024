// The lab's motion-JPEG cameras encode each frame as a complete baseline JFIF picture
// (YCbCr 4:2:0, its own tables) through stb_image_write.
#pragma once

#include <windows.h>
#include <vector>

namespace lab {

class JpegEncoder {
public:
    explicit JpegEncoder(int quality = 85);

    // Encodes a top-down RGB24 picture without row padding; the result lives until the next call.
    const std::vector<BYTE> &encode(const BYTE *rgb, int width, int height);

private:
    static void append(void *context, void *data, int size);

    int m_quality;
    std::vector<BYTE> m_out;
};

} // namespace lab
