#include "ChannelStreamCapture.h"

#include <ATSCTuner.h>
#include <OcurTuner.h>
#include <ScopeExit.h>

#include <boost/bind/bind.hpp>

#include <chrono>

namespace sorvane {
namespace diag {

namespace {

// The packet buffer takes whole samples (ISampleGrabber::SetCallback's buffer mode).
const long kBufferMode = 1;
const DWORD kWatchIntervalMs = 100;

// Lets the graph's window messages through while the stream arrives.
void pumpMessagesFor(DWORD milliseconds)
{
    MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace

template <class Tuner>
ChannelStreamCapture<Tuner>::ChannelStreamCapture(const ruvo::DiagDevice &device, const kel::String &title)
    : Tuner(device, title)
{
}

template <class Tuner>
HRESULT ChannelStreamCapture<Tuner>::capture(int channel, double seconds, const Watch &watch)
{
    ScopeExit cleanUp(boost::bind(&ChannelStreamCapture::cleanUpAll, this));
    this->setupGraph();
    this->setupDevice();
    const HRESULT hr = this->m_mediaControl->Run();
    if (FAILED(hr))
        return hr;
    // As the scan does: the graph runs, then the channel is tuned, settled and checked; what
    // arrives afterwards is kept, signal or not (the last channel tried may have none).
    this->m_currentChannel = static_cast<uint32_t>(channel);
    this->checkCurrentChannel();
    this->m_channelStream.markFound(*m_packets);
    keepFor(seconds, watch);
    this->m_mediaControl->Stop();
    this->keepChannelStream(m_packets);
    return S_OK;
}

template <class Tuner>
void ChannelStreamCapture<Tuner>::keepFor(double seconds, const Watch &watch)
{
    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    for (;;) {
        const double kept = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (kept >= seconds || !watch(kept))
            return;
        pumpMessagesFor(kWatchIntervalMs);
    }
}

template <class Tuner>
void ChannelStreamCapture<Tuner>::setupSampleGrabber()
{
    CaptureBase::setupSampleGrabber();
    m_packets = new SampleCallback;
    const HRESULT hr = this->m_sampleGrabber->SetCallback(m_packets, kBufferMode);
    if (FAILED(hr))
        throw CaptureException(ruvo::TestResult::FAIL(), hr, nullptr, nullptr);
}

// The stream is what is kept, not its picture.
template <class Tuner>
void ChannelStreamCapture<Tuner>::renderFromFilter(CComPtr<IBaseFilter>)
{
}

template <class Tuner>
void ChannelStreamCapture<Tuner>::cleanUpCOMInterfaces()
{
    // The streaming thread stops, then the grabber lets go of the buffer, before the buffer goes.
    if (this->m_mediaControl)
        this->m_mediaControl->Stop();
    if (this->m_sampleGrabber)
        this->m_sampleGrabber->SetCallback(nullptr, kBufferMode);
    m_packets.Release();
    Tuner::cleanUpCOMInterfaces();
}

template class ChannelStreamCapture<ATSCTuner>;
template class ChannelStreamCapture<OcurTuner>;

} // namespace diag
} // namespace sorvane
