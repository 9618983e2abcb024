// The input pin of a TransformFilter: types and samples go to the filter, stream control
// passes downstream.
#pragma once

#include "common/InputPin.h"

namespace lab {

class TransformFilter;

class TransformInputPin : public InputPin {
public:
    explicit TransformInputPin(TransformFilter &filter);

    STDMETHODIMP EndOfStream() override;
    STDMETHODIMP BeginFlush() override;
    STDMETHODIMP EndFlush() override;
    STDMETHODIMP NewSegment(REFERENCE_TIME start, REFERENCE_TIME stop, double rate) override;

    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

protected:
    HRESULT receive(IMediaSample *sample) override;

private:
    TransformFilter &m_transform;
};

} // namespace lab
