// The output pin that carries an MPEG-2 transport stream (MEDIATYPE_Stream with the
// MPEG2_TRANSPORT or BDA MPEG2_TRANSPORT subtype): while the filter runs, its thread generates
// the stream of what the tuner has tuned, paced at the device's bit rate, in samples of whole
// packets without time stamps, as BDA receivers deliver them. Nothing tuned, nothing on the air
// there, or a modulation that does not lock: no samples.
//
// Device keys: bitrate = bits per second (default 19392658, ATSC's rate), packets-per-sample =
// n (default 312); the stream faults of StreamFaultKeys. Journal: "Delivered <n>" at Stop.
#pragma once

#include <memory>
#include <vector>

#include "bdadevice/TransportFeed.h"
#include "common/StreamingPin.h"

namespace lab {

class TransportStreamGenerator;

class TransportStreamPin : public StreamingPin {
public:
    // bdaSubtypeFirst: offer KSDATAFORMAT_SUBTYPE_BDA_MPEG2_TRANSPORT before MPEG2_TRANSPORT (the
    // tuner-to-receiver link).
    TransportStreamPin(BaseFilter &filter, const std::wstring &name, TransportFeed &feed, bool bdaSubtypeFirst);
    ~TransportStreamPin();

    std::vector<MediaType> mediaTypes() override;
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

    // Sample periods begun by every transport stream of the process, and how many streams run:
    // a test on a manual clock waits for periods to pass instead of for real time.
    static long long periodsBegun();
    static long streamsRunning();

protected:
    long bufferSize() override;
    bool canStream() override { return isConnected() && m_feed.streams(); }
    void stream(HANDLE stopEvent) override;
    void streamStarting() override;
    void streamEnded() override;

private:
    struct Rate {
        long bitsPerSecond;
        long packetsPerSample;
    };
    static Rate rateOf(const DeviceState &device);
    HRESULT deliverBytes(const std::vector<unsigned char> &bytes, bool discontinuity);

    TransportFeed &m_feed;
    const bool m_bdaSubtypeFirst;
};

} // namespace lab
