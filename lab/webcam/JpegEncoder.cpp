#include "webcam/JpegEncoder.h"

// The one translation unit that holds stb_image_write's code; the lab writes to memory only.
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace lab {

JpegEncoder::JpegEncoder(int quality) : m_quality(quality) {}

const std::vector<BYTE> &JpegEncoder::encode(const BYTE *rgb, int width, int height)
{
    m_out.clear();
    if (!stbi_write_jpg_to_func(&JpegEncoder::append, this, width, height, 3, rgb, m_quality))
        m_out.clear();
    return m_out;
}

void JpegEncoder::append(void *context, void *data, int size)
{
    std::vector<BYTE> &out = static_cast<JpegEncoder *>(context)->m_out;
    const BYTE *bytes = static_cast<const BYTE *>(data);
    out.insert(out.end(), bytes, bytes + size);
}

} // namespace lab
