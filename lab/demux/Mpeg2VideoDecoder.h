// The MPEG-2 video decoder Windows has and Wine lacks, for the demultiplexer's video pin: it
// takes MPEG-2 video (FORMAT_MPEG2Video) and gives RGB32 or RGB24 of the connected picture
// size, which Wine's video renderer takes. It decodes the lab's own pictures only: from each
// picture's user data it paints the lab picture of that frame number with the channel and
// program bands of lab/ChannelMark.h (the same marks the picture's coded slices show a real
// decoder, lab/broadcast/MpegVideoFrame.h); anything else is dropped. Registered with merit, so
// intelligent connect puts it behind a demultiplexer's video pin.
#pragma once

#include "common/TransformFilter.h"
#include "webcam/FramePainter.h"

namespace lab {

class Mpeg2VideoDecoder : public TransformFilter {
public:
    Mpeg2VideoDecoder();

    HRESULT checkInput(const AM_MEDIA_TYPE &input) override;
    std::vector<MediaType> outputTypes(const AM_MEDIA_TYPE &input) override;
    HRESULT checkTransform(const AM_MEDIA_TYPE &input, const AM_MEDIA_TYPE &output) override;
    long transform(const BYTE *in, long inLength, BYTE *out, long outCapacity) override;

private:
    static void paintBand(BYTE *picture, const BITMAPINFOHEADER &header, int band, unsigned long number);

    FramePainter m_painter;
};

} // namespace lab
