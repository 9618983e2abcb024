#include "decoders/JpegDecoder.h"

#include <climits>
#include <memory>

// The one translation unit that holds stb_image's code: JPEG from memory only, and no shared
// failure text, since the decompressor's threads decode at once and only need yes or no.
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_JPEG
#define STBI_NO_STDIO
#define STBI_NO_FAILURE_STRINGS
#include <stb/stb_image.h>

namespace lab {

namespace {

struct StbiFree {
    void operator()(stbi_uc *pixels) const { stbi_image_free(pixels); }
};

using DecodedPixels = std::unique_ptr<stbi_uc, StbiFree>;

} // namespace

bool JpegDecoder::decode(const BYTE *data, size_t length, int width, int height, BYTE *out, long stride, int pixelBytes,
                         bool bottomUp)
{
    if (!data || length == 0 || length > static_cast<size_t>(INT_MAX))
        return false;
    int decodedWidth = 0;
    int decodedHeight = 0;
    int channels = 0;
    const DecodedPixels rgb(
        stbi_load_from_memory(data, static_cast<int>(length), &decodedWidth, &decodedHeight, &channels, 3));
    if (!rgb || decodedWidth != width || decodedHeight != height)
        return false;
    for (int y = 0; y < height; ++y) {
        const stbi_uc *source = rgb.get() + static_cast<size_t>(y) * static_cast<size_t>(width) * 3;
        BYTE *row = out + stride * (bottomUp ? height - 1 - y : y);
        for (int x = 0; x < width; ++x) {
            BYTE *pixel = row + x * pixelBytes;
            pixel[0] = source[x * 3 + 2];
            pixel[1] = source[x * 3 + 1];
            pixel[2] = source[x * 3];
            if (pixelBytes == 4)
                pixel[3] = 0xFF;
        }
    }
    return true;
}

} // namespace lab
