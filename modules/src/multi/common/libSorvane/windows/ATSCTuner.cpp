#include "ATSCTuner.h"
#include "ATSCChannelPlan.h"
#include "AtscChannelRequest.h"
#include "CaptureLog.h"
#include "ErrorHandler.h"
#include "LogTexts.h"

#include <kel/System.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

using ruvo::TestResult;

namespace {

// Each physical channel is checked on its first virtual channel (N.1).
const int kFirstMinorChannel = 1;
const wchar_t *const kAtscSpaces[] = {L"ATSC"};
// Channel, minor channel and locator are one step of the request.
const AtscChannelRequest::Texts kRequestTexts = {
    "ITuningSpace::CreateTuneRequest failed: ", "IATSCChannelTuneRequest set-up failed: ",
    "IATSCChannelTuneRequest set-up failed: ", "IATSCChannelTuneRequest set-up failed: "};

kel::String hrText(HRESULT hr)
{
    return ErrorHandler::errorMessageFromHr(hr);
}

} // namespace

ATSCTuner::ATSCTuner(const ruvo::DiagDevice &device, const kel::String &name) : DigitalTuner(device, name) {}

void ATSCTuner::setupDevice()
{
    kel::TraceLogger trace(sorvaneLogger(), "ATSCTuner::setupDevice()", __FILE__, __LINE__);
    doSetupDevice(true, true, false);
    chooseTuningSpace(kAtscSpaces, 1);
}

void ATSCTuner::chooseTuningSpace(const wchar_t *const *names, int count)
{
    m_tuningSpace.Release();
    for (int i = 0; i < count && !m_tuningSpace; ++i) {
        const CComPtr<ITuningSpace> space = getTuningSpace(kel::String(names[i]));
        m_tuningSpace = space.p;
    }
    if (!m_tuningSpace)
        SORVANE_THROW_LOGGED("Cannot get the " << kel::String(names[0]) << " tuning space", TestResult::CANNOTRUN(), 0,
                             nullptr);
}

// No sample grabber: the receiver feeds the demultiplexer directly.
void ATSCTuner::setupSampleGrabber() {}

bool ATSCTuner::tuneToChannel(int channel, int minorChannel, int /*inputType*/)
{
    kel::TraceLogger trace(sorvaneLogger(), "ATSCTuner::tuneToChannel", __FILE__, __LINE__);
    SORVANE_LOG_DETAIL("channel = " << channel << ", minorChannel = " << minorChannel);
    CComPtr<IATSCLocator> locator;
    if (!makeLocator(channel, locator))
        return false;
    if (!AtscChannelRequest::tune(m_tuner, m_tuningSpace, channel, minorChannel, locator, kRequestTexts))
        return false;
    kel::System::mssleep(m_settleDelay);
    return true;
}

bool ATSCTuner::makeLocator(int channel, CComPtr<IATSCLocator> &locator)
{
    const long frequency = static_cast<long>(ATSCChannelPlan::frequencyKHz(channel));
    SORVANE_LOG_DETAIL("frequency = " << frequency);
    HRESULT hr = locator.CoCreateInstance(CLSID_ATSCLocator, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ATSCLocator creation failed: " << hrText(hr));
        return false;
    }
    if (FAILED(hr = locator->put_PhysicalChannel(channel)) || FAILED(hr = locator->put_CarrierFrequency(frequency)) ||
        FAILED(hr = locator->put_Modulation(BDA_MOD_8VSB))) {
        SORVANE_LOG_ERROR("IATSCLocator set-up failed: " << hrText(hr));
        return false;
    }
    return true;
}

bool ATSCTuner::checkCurrentChannel()
{
    SORVANE_TRACE();
    return checkChannel(static_cast<int>(m_currentChannel), kFirstMinorChannel, 0);
}

void ATSCTuner::signalFound()
{
    DigitalTuner::signalFound();
    SORVANE_LOG_DETAIL(
        "ATSC channel " << static_cast<unsigned>(m_currentChannel) << " at "
                        << static_cast<unsigned>(ATSCChannelPlan::frequencyKHz(static_cast<int>(m_currentChannel)))
                        << " kHz");
}

void ATSCTuner::cleanUpCOMInterfaces()
{
    m_tuningSpace.Release();
    DigitalTuner::cleanUpCOMInterfaces();
}

} // namespace sorvane
