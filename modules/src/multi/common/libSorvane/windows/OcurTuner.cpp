#include "OcurTuner.h"
#include "CaptureLog.h"
#include "ModuleRegistration.h"

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

const long kNoMinorChannel = -1;
// The receiver's own space first; a driver that only registers the ATSC ones still tunes.
const wchar_t *const kOcurSpaces[] = {L"Digital Cable", L"ATSCCable", L"ATSC"};

} // namespace

OcurTuner::OcurTuner(const ruvo::DiagDevice &device, const kel::String &name) : ATSCTuner(device, name) {}

void OcurTuner::setupDevice()
{
    kel::TraceLogger trace(sorvaneLogger(), "OcurTuner::setupDevice()", __FILE__, __LINE__);
    // The receiver is found by the device instance it shares with the tuner, not by name:
    // its filters are named apart ("... Tuner", "... Receiver").
    doSetupDevice(true, true, false);
    chooseTuningSpace(kOcurSpaces, sizeof(kOcurSpaces) / sizeof(kOcurSpaces[0]));
}

void OcurTuner::setupSampleGrabber() {}

bool OcurTuner::makeLocator(int channel, CComPtr<IATSCLocator> &locator)
{
    // A cable channel is not where the terrestrial plan puts the broadcast channel of that
    // number (cable 2 has its picture carrier at 55.25 MHz, not a centre at 57 MHz), and cable
    // carries QAM, not 8-VSB: the receiver places the channel itself.
    SORVANE_LOG_DETAIL("channel " << channel << " is placed by the receiver's channel map");
    locator.Release();
    return true;
}

// The terrestrial frequency the ATSC tuner logs does not apply to a cable channel.
void OcurTuner::signalFound()
{
    DigitalTuner::signalFound();
    SORVANE_LOG_DETAIL("OpenCable virtual channel " << static_cast<unsigned>(m_currentChannel));
}

bool OcurTuner::isSignalPresent()
{
    if (!(g_useMinorChannelTechnique->isset() && g_useMinorChannelTechnique->value().valueBool())) {
        return DigitalTuner::isSignalPresent();
    }
    SORVANE_LOG(kel::LOG_INFO, "Trying minor channel method");
    long minorChannel = kNoMinorChannel;
    CComPtr<ITuneRequest> request;
    if (m_tuner && SUCCEEDED(m_tuner->get_TuneRequest(&request)) && request) {
        CComPtr<IATSCChannelTuneRequest> channelRequest;
        request.QueryInterface(&channelRequest);
        if (channelRequest && FAILED(channelRequest->get_MinorChannel(&minorChannel)))
            minorChannel = kNoMinorChannel;
    }
    return minorChannel != kNoMinorChannel;
}

} // namespace sorvane
