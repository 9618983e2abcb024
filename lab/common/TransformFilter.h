// A filter with one input and one output pin that turns each input sample into one output
// sample on the upstream thread (decoders, converters). Subclasses say which types they take
// and give, and transform the bytes.
#pragma once

#include <vector>

#include "common/BaseFilter.h"
#include "common/TransformInputPin.h"
#include "common/TransformOutputPin.h"

namespace lab {

class TransformFilter : public BaseFilter {
public:
    explicit TransformFilter(const CLSID &clsid);

    int pinCount() override { return 2; }
    BasePin *pin(int index) override;

    virtual HRESULT checkInput(const AM_MEDIA_TYPE &input) = 0;
    // Output types for a connected input, preferred first.
    virtual std::vector<MediaType> outputTypes(const AM_MEDIA_TYPE &input) = 0;
    virtual HRESULT checkTransform(const AM_MEDIA_TYPE &input, const AM_MEDIA_TYPE &output) = 0;
    // Fills out from in; returns the output length, or 0 to drop the sample (unreadable input).
    virtual long transform(const BYTE *in, long inLength, BYTE *out, long outCapacity) = 0;

    HRESULT receive(IMediaSample *sample);
    const MediaType &inputType() const { return m_input.connectionType(); }
    const MediaType &outputType() const { return m_output.connectionType(); }
    TransformOutputPin &output() { return m_output; }

protected:
    // A video type with a VIDEOINFOHEADER block.
    static bool isVideoInfo(const AM_MEDIA_TYPE &type);
    // ... of subtype RGB32 or RGB24, what the lab's decoders hand to the renderer.
    static bool isRgbVideoInfo(const AM_MEDIA_TYPE &type);
    // For an RGB video-info output (isRgbVideoInfo): S_OK when it has the input frame's size,
    // its subtype's bit count and no compression, else VFW_E_TYPE_NOT_ACCEPTED.
    static HRESULT checkRgbFrame(const BITMAPINFOHEADER &input, const AM_MEDIA_TYPE &output);

private:
    TransformInputPin m_input;
    TransformOutputPin m_output;
};

} // namespace lab
