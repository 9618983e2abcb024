#include "CaptureClasses.h"
#include "ChannelStreamCapture.h"

#include <ATSCTuner.h>
#include <AnalogTuner.h>
#include <ClearQAMTuner.h>
#include <DVBTuner.h>
#include <OcurTuner.h>
#include <Webcam.h>

#include <kel/FileSystem.h>

namespace sorvane {
namespace diag {

bool CaptureClasses::isTuner(const ruvo::DiagDevice &device)
{
    return device.deviceCapabilities().isCapable(ruvo::DeviceCapability::AnalogTVTuner());
}

CapturedFrames CaptureClasses::captureFrames(const ruvo::DiagDevice &device, const std::wstring &title,
                                             unsigned captureDelay, unsigned count)
{
    Webcam camera(device, kel::String(title), captureDelay);
    camera.captureFrames(count);
    Webcam::FrameInfo info;
    CapturedFrames frames;
    frames.buffers = camera.getFrames(info);
    frames.width = info.width;
    frames.height = info.height;
    frames.layout = CapturedFrames::layoutOf(info.format, info.isJpeg);
    frames.bottomUp = info.bottomUp;
    return frames;
}

void CaptureClasses::captureToScreen(const ruvo::DiagDevice &device, const std::wstring &title, unsigned captureDelay)
{
    if (isTuner(device))
        AnalogTuner(device, kel::String(title)).captureToScreen();
    else
        Webcam(device, kel::String(title), captureDelay).captureToScreen();
}

void CaptureClasses::captureToFile(const ruvo::DiagDevice &device, const std::wstring &title, unsigned captureDelay,
                                   const std::wstring &fileName)
{
    if (isTuner(device))
        AnalogTuner(device, kel::String(title)).captureToFile(kel::String(fileName));
    else
        Webcam(device, kel::String(title), captureDelay).captureToFile(kel::String(fileName));
}

void CaptureClasses::checkTVSignal(const ruvo::DiagDevice &device, const std::wstring &title)
{
    AnalogTuner(device, kel::String(title)).checkTVSignal();
}

void CaptureClasses::checkFMRadioSignal(const ruvo::DiagDevice &device, const std::wstring &title)
{
    AnalogTuner(device, kel::String(title)).checkFMRadioSignal();
}

namespace {

// The highest channel number a DVB-T country list or the DTMB plan uses, with room to spare.
const int kHighestListedChannel = 200;

void readStream(const DigitalTuner &tuner, CaptureClasses::StreamReport &report)
{
    report.health = tuner.streamHealth();
    report.quality = tuner.streamQuality();
    report.bytes = tuner.channelStream().bytes();
    report.fromFoundChannel = tuner.channelStream().found();
    report.durationMs = tuner.channelStream().durationMs();
}

void readChannels(const DigitalTuner &, CaptureClasses::StreamReport &) {}

void readChannels(const DVBTuner &tuner, CaptureClasses::StreamReport &report)
{
    report.isDTMB = tuner.isDTMB();
    report.channelFrequencies.clear();
    for (int channel = 0; channel <= kHighestListedChannel; ++channel)
        report.channelFrequencies.push_back(tuner.channelFrequencyKHz(channel));
}

// The tuner has cleaned up (and kept its stream) when checkTVSignal returns or throws.
template <class Tuner>
void scanWith(const ruvo::DiagDevice &device, const std::wstring &title, CaptureClasses::StreamReport &report)
{
    Tuner tuner(device, kel::String(title));
    try {
        tuner.checkTVSignal();
    } catch (...) {
        readStream(tuner, report);
        readChannels(tuner, report);
        throw;
    }
    readStream(tuner, report);
    readChannels(tuner, report);
}

template <class Tuner>
HRESULT captureWith(const ruvo::DiagDevice &device, const std::wstring &title, int channel, double seconds,
                    const std::function<bool(double)> &watch, CaptureClasses::StreamReport &report)
{
    ChannelStreamCapture<Tuner> capture(device, kel::String(title));
    const HRESULT hr = capture.capture(channel, seconds, watch);
    readStream(capture, report);
    return hr;
}

} // namespace

void CaptureClasses::checkDigitalTVSignal(DigitalKind kind, const ruvo::DiagDevice &device, const std::wstring &title,
                                          StreamReport &report)
{
    report = StreamReport();
    switch (kind) {
    case DigitalKind::ATSC:
        return scanWith<ATSCTuner>(device, title, report);
    case DigitalKind::CLEARQAM:
        return scanWith<ClearQAMTuner>(device, title, report);
    case DigitalKind::DVBT:
        return scanWith<DVBTuner>(device, title, report);
    case DigitalKind::OCUR:
        break;
    }
    scanWith<OcurTuner>(device, title, report);
}

bool CaptureClasses::scanKeepsStream(DigitalKind kind)
{
    return kind == DigitalKind::CLEARQAM || kind == DigitalKind::DVBT;
}

HRESULT CaptureClasses::captureChannelStream(DigitalKind kind, const ruvo::DiagDevice &device,
                                             const std::wstring &title, int channel, double seconds,
                                             const std::function<bool(double)> &watch, StreamReport &report)
{
    report = StreamReport();
    if (kind == DigitalKind::OCUR)
        return captureWith<OcurTuner>(device, title, channel, seconds, watch, report);
    return captureWith<ATSCTuner>(device, title, channel, seconds, watch, report);
}

std::wstring CaptureClasses::recordingPath(const std::wstring &fileName)
{
    return kel::FileSystem::tempDirectory().wstr() + fileName + L".avi";
}

} // namespace diag
} // namespace sorvane
