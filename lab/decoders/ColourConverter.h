// Colour-space converter: YUY2 or UYVY (BT.601, studio range) to RGB32/RGB24, registered in
// the legacy filter category so intelligent connect places it before an RGB-only renderer.
#pragma once

#include "decoders/RgbDecoderFilter.h"

namespace lab {

class ColourConverter : public RgbDecoderFilter {
public:
    ColourConverter();

    HRESULT checkInput(const AM_MEDIA_TYPE &input) override;

protected:
    bool decode(const BYTE *in, long inLength, int width, int height, BYTE *out, long stride, int pixelBytes,
                bool bottomUp) override;
};

} // namespace lab
