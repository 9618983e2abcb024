#include "demux/DemuxInputPin.h"

#include <uuids.h>

#include "bdadevice/TransportStreamType.h"
#include "common/DeviceRegistry.h"
#include "demux/Mpeg2Demultiplexer.h"

namespace lab {

DemuxInputPin::DemuxInputPin(Mpeg2Demultiplexer &demux) : InputPin(demux, L"MPEG-2 Stream"), m_demux(demux) {}

HRESULT DemuxInputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    if (DeviceRegistry::device(Mpeg2Demultiplexer::kDeviceName)->flag(L"fault.connect"))
        return S_FALSE;
    return bda::acceptsTransportStream(type);
}

std::vector<MediaType> DemuxInputPin::mediaTypes()
{
    AM_MEDIA_TYPE type = {};
    type.majortype = MEDIATYPE_Stream;
    type.subtype = MEDIASUBTYPE_MPEG2_TRANSPORT;
    type.formattype = FORMAT_None;
    type.bFixedSizeSamples = TRUE;
    type.lSampleSize = 188;
    return {MediaType(type)};
}

HRESULT DemuxInputPin::onConnected()
{
    m_demux.inputConnected();
    return S_OK;
}

HRESULT DemuxInputPin::receive(IMediaSample *sample)
{
    return m_demux.receive(sample);
}

STDMETHODIMP DemuxInputPin::EndOfStream()
{
    m_demux.endOfStream();
    return S_OK;
}

} // namespace lab
