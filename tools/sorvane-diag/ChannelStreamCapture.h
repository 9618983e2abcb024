// A few seconds of one channel's transport stream from a tuner whose scan graph has no sample
// grabber (ATSC, OpenCable). The library's own tuner class builds its graph once more and tunes
// the channel exactly as its scan does (device matching, tuning space, locator or virtual
// channel); this graph alone gets a sample grabber in front of the demultiplexer, feeding the
// library's packet buffer. Nothing is rendered, so no video window opens.
#pragma once

#include <SampleCallback.h>

#include <atlbase.h>

#include <kel/String.h>
#include <ruvo/DiagDevice.h>

#include <functional>

namespace sorvane {
namespace diag {

template <class Tuner>
class ChannelStreamCapture : public Tuner {
public:
    // Called about ten times a second with the seconds kept so far; false ends the capture.
    typedef std::function<bool(double seconds)> Watch;

    ChannelStreamCapture(const ruvo::DiagDevice &device, const kel::String &title);

    // Builds the graph, starts it, tunes `channel`, and keeps what arrives for `seconds` or until
    // `watch` ends it (channelStream(), streamHealth()); cleans up. The graph's Run failure, else
    // S_OK. Throws CaptureException when the library cannot build the graph.
    HRESULT capture(int channel, double seconds, const Watch &watch);

protected:
    void setupSampleGrabber() override;
    void renderFromFilter(CComPtr<IBaseFilter> filter) override;
    void cleanUpCOMInterfaces() override;

private:
    void keepFor(double seconds, const Watch &watch);

    CComPtr<SampleCallback> m_packets;
};

} // namespace diag
} // namespace sorvane
