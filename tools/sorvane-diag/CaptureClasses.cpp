#include "CaptureClasses.h"

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

template <class Tuner>
CaptureClasses::StreamReport scanWith(const ruvo::DiagDevice &device, const std::wstring &title)
{
    Tuner tuner(device, kel::String(title));
    tuner.checkTVSignal();
    CaptureClasses::StreamReport report;
    report.health = tuner.streamHealth();
    report.quality = tuner.streamQuality();
    return report;
}

} // namespace

CaptureClasses::StreamReport CaptureClasses::checkDigitalTVSignal(DigitalKind kind, const ruvo::DiagDevice &device,
                                                                  const std::wstring &title)
{
    switch (kind) {
    case DigitalKind::ATSC:
        return scanWith<ATSCTuner>(device, title);
    case DigitalKind::CLEARQAM:
        return scanWith<ClearQAMTuner>(device, title);
    case DigitalKind::DVBT:
        return scanWith<DVBTuner>(device, title);
    case DigitalKind::OCUR:
        break;
    }
    return scanWith<OcurTuner>(device, title);
}

std::wstring CaptureClasses::recordingPath(const std::wstring &fileName)
{
    return kel::FileSystem::tempDirectory().wstr() + fileName + L".avi";
}

} // namespace diag
} // namespace sorvane
