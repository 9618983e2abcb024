// A transform that turns one video format into RGB32 or RGB24 of the same size and rate, the
// only input Wine's video renderer takes. Subclasses name their inputs and decode one frame.
#pragma once

#include "common/TransformFilter.h"

namespace lab {

class RgbDecoderFilter : public TransformFilter {
public:
    explicit RgbDecoderFilter(const CLSID &clsid);

    std::vector<MediaType> outputTypes(const AM_MEDIA_TYPE &input) override;
    HRESULT checkTransform(const AM_MEDIA_TYPE &input, const AM_MEDIA_TYPE &output) override;
    long transform(const BYTE *in, long inLength, BYTE *out, long outCapacity) override;

protected:
    // Decodes a frame into BGR rows (3 or 4 bytes a pixel); false drops the frame.
    virtual bool decode(const BYTE *in, long inLength, int width, int height, BYTE *out, long stride, int pixelBytes,
                        bool bottomUp) = 0;
};

} // namespace lab
