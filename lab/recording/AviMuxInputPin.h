// One input of the AVI multiplexer: a video stream (VIDEOINFOHEADER) or an audio stream
// (WAVEFORMATEX). The multiplexer keeps one input free, so each connection opens another.
#pragma once

#include "common/InputPin.h"

namespace lab {

class AviMux;

class AviMuxInputPin : public InputPin {
public:
    AviMuxInputPin(AviMux &mux, int number);

    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;
    STDMETHODIMP EndOfStream() override;

    // The stream this input writes in the file being recorded, or -1.
    void setStream(int stream) { m_stream = stream; }
    int stream() const { return m_stream; }

protected:
    HRESULT receive(IMediaSample *sample) override;
    HRESULT onConnected() override;

private:
    AviMux &m_mux;
    int m_stream = -1;
};

} // namespace lab
