// Motion-JPEG decompressor: MJPG frames to RGB32/RGB24, registered in the legacy filter
// category so intelligent connect places it (preview, or a grabber that asks for RGB24).
#pragma once

#include "decoders/JpegDecoder.h"
#include "decoders/RgbDecoderFilter.h"

namespace lab {

class MjpegDecompressor : public RgbDecoderFilter {
public:
    MjpegDecompressor();

    HRESULT checkInput(const AM_MEDIA_TYPE &input) override;

protected:
    bool decode(const BYTE *in, long inLength, int width, int height, BYTE *out, long stride, int pixelBytes,
                bool bottomUp) override;

private:
    JpegDecoder m_decoder;
};

} // namespace lab
