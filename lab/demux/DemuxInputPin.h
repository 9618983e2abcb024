// The demultiplexer's input: a transport stream (MEDIATYPE_Stream, MPEG2_TRANSPORT or the BDA
// transport subtype) whose samples go to the filter on the upstream thread.
#pragma once

#include "common/InputPin.h"

namespace lab {

class Mpeg2Demultiplexer;

class DemuxInputPin : public InputPin {
public:
    explicit DemuxInputPin(Mpeg2Demultiplexer &demux);

    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;
    std::vector<MediaType> mediaTypes() override;
    STDMETHODIMP EndOfStream() override;

protected:
    HRESULT receive(IMediaSample *sample) override;
    HRESULT onConnected() override;

private:
    Mpeg2Demultiplexer &m_demux;
};

} // namespace lab
