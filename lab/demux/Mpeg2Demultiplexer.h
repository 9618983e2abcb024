// The MPEG-2 Demultiplexer under Windows' class ID (CLSID_MPEG2Demultiplexer), for transport
// streams: its input takes the stream of a BDA receiver (or a sample grabber passing it on);
// once connected it shows the output pins a demultiplexer configured for the stream has:
//   "Video"     MPEG-2 video (MEDIASUBTYPE_MPEG2_VIDEO, an MPEG2VIDEOINFO of 320x240 at 29.97
//               frames per second), one sample per picture
//   "Audio"     MPEG audio (MEDIASUBTYPE_MPEG2_AUDIO), one sample per audio frame
//   "Sections"  PSI sections (MEDIATYPE_MPEG2_SECTIONS), one sample per section with a good CRC
// The video and audio pins carry the first clear program of the stream's tables (see
// TransportStreamDemux); no PID mapping interface is offered. Samples carry no time stamps.
// Faults (overrides under the name "MPEG-2 Demultiplexer", read when the filter is created):
//   fault.EnumPins = HRESULT      EnumPins fails with it
//   fault.EnumPins.afterSystemType = HRESULT
//                                 EnumPins fails with it once a DVB tuning space's system type
//                                 was put (journal of "System Tuning Spaces"): the DVB-T tuner's
//                                 pass over the rendered demultiplexer's pins, which follows it
//   fault.connect = yes           the input pin takes no connection
//   fault.video = yes             the video pin offers a subtype no decoder or renderer takes
#pragma once

#include <memory>
#include <mutex>

#include "common/BaseFilter.h"
#include "common/DeviceState.h"
#include "demux/DemuxInputPin.h"
#include "demux/DemuxOutputPin.h"
#include "demux/TransportStreamDemux.h"

namespace lab {

class Mpeg2Demultiplexer : public BaseFilter {
public:
    static const LONG kVideoWidth = 320;
    static const LONG kVideoHeight = 240;

    static const wchar_t kDeviceName[];

    Mpeg2Demultiplexer();

    STDMETHODIMP EnumPins(IEnumPins **pins) override;

    int pinCount() override;
    BasePin *pin(int index) override;

    void inputConnected();
    HRESULT receive(IMediaSample *sample);
    void endOfStream();

protected:
    HRESULT onPause(bool fromStopped) override;

private:
    // A DVB tuning space's system type was put since the tuning spaces' journal was cleared.
    static bool dvbSystemTypePut();
    static MediaType videoType(bool unrenderable);
    static MediaType audioType();
    static MediaType sectionsType();

    DemuxInputPin m_input;
    DemuxOutputPin m_video;
    DemuxOutputPin m_audio;
    DemuxOutputPin m_sections;
    bool m_outputsShown = false;
    std::mutex m_streamLock; // the streaming thread's demultiplexing state
    TransportStreamDemux m_demux;
    bool m_discontinuity = true;
    std::shared_ptr<DeviceState> m_device;
};

} // namespace lab
