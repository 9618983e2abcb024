// Decodes motion-JPEG frames (baseline and progressive JPEG) through stb_image into the
// decompressor's output rows.
#pragma once

#include <windows.h>

namespace lab {

class JpegDecoder {
public:
    // Decodes into BGR rows of 3 or 4 bytes per pixel; the picture must be width x height.
    // Returns false for anything it cannot read.
    bool decode(const BYTE *data, size_t length, int width, int height, BYTE *out, long stride, int pixelBytes,
                bool bottomUp);
};

} // namespace lab
