#include "ClearQAMTuner.h"
#include "AtscChannelRequest.h"
#include "CableFrequencyPlan.h"
#include "CaptureLog.h"
#include "ClearProgramSearch.h"
#include "ErrorHandler.h"
#include "LogTexts.h"
#include "ModuleRegistration.h"
#include "SampleCallback.h"

#include <kel/System.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

using ruvo::TestResult;

namespace {

const uint32_t kMaxCableChannel = 120;
const uint32_t kCollectDelay = 500;
const long kBufferMode = 1;
const int kFirstProgram = 1;
const wchar_t *const kCableSpaces[] = {L"ATSCCable", L"ClearQAM", L"Digital Cable"};
// A cable channel has no minor channel: the program number in the locator picks the program.
const AtscChannelRequest::Texts kRequestTexts = {
    "IATSCTuningSpace::CreateTuneRequest failed: ", "IATSCChannelTuneRequest::put_Channnel failed: ", nullptr,
    "IATSCChannelTuneRequest::put_Locator failed: "};

kel::String hrText(HRESULT hr)
{
    return ErrorHandler::errorMessageFromHr(hr);
}

} // namespace

ClearQAMTuner::ClearQAMTuner(const ruvo::DiagDevice &device, const kel::String &name) : DigitalTuner(device, name)
{
    m_maxChannel = kMaxCableChannel;
}

void ClearQAMTuner::setupDevice()
{
    kel::TraceLogger trace(sorvaneLogger(), "ClearQAMTuner::setupDevice()", __FILE__, __LINE__);
    doSetupDevice(false, true, false);

    m_tuningSpace.Release();
    for (const wchar_t *name : kCableSpaces) {
        const CComPtr<ITuningSpace> space = getTuningSpace(kel::String(name));
        m_tuningSpace = space.p;
        if (m_tuningSpace)
            break;
    }
    if (!m_tuningSpace)
        SORVANE_THROW_LOGGED("Cannot get either ATSCCable, ClearQAM, or Digital Cable tuning space",
                             TestResult::CANNOTRUN(), 0, nullptr);

    m_sampleGrabberCallback.Release();
    m_sampleGrabberCallback = new SampleCallback;
    const HRESULT hr = m_sampleGrabber->SetCallback(m_sampleGrabberCallback, kBufferMode);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("ISampleGrabber::SetCallback failed: ", hr);
}

bool ClearQAMTuner::tuneToChannel(int channel, int programNumber, int /*inputType*/)
{
    kel::TraceLogger trace(sorvaneLogger(), "ClearQAMTuner::tuneToChannel", __FILE__, __LINE__);
    CComPtr<IATSCLocator2> locator;
    if (!makeLocator(channel, programNumber, locator))
        return false;
    CComPtr<IATSCTuningSpace> space;
    m_tuningSpace.QueryInterface(&space);
    if (!space) {
        SORVANE_LOG_ERROR("Cannot get an IATSCTuningSpace from ITuningSpace");
        return false;
    }
    if (!AtscChannelRequest::tune(m_tuner, space, channel, AtscChannelRequest::kNoMinorChannel, locator, kRequestTexts))
        return false;
    kel::System::mssleep(m_settleDelay);
    return true;
}

bool ClearQAMTuner::makeLocator(int channel, int programNumber, CComPtr<IATSCLocator2> &locator)
{
    CComPtr<IATSCLocator> created;
    HRESULT hr = created.CoCreateInstance(CLSID_ATSCLocator, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ATSCLocator creation failed: " << hrText(hr));
        return false;
    }
    created.QueryInterface(&locator);
    if (!locator) {
        SORVANE_LOG_ERROR("Cannot get IATSCLocator2 interface from ATSCLocator instance");
        return false;
    }
    hr = locator->put_ProgramNumber(programNumber);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("IATSCLocator2::put_ProgramNumber failed: " << hrText(hr));
        return false;
    }
    hr = locator->put_CarrierFrequency(static_cast<long>(CableFrequencyPlan::table()[channel]));
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("IATSCLocator2::put_CarrierFrequency failed: " << hrText(hr));
        return false;
    }
    hr = locator->put_Modulation(BDA_MOD_256QAM);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("IATSCLocator2::put_Modulation failed: " << hrText(hr));
        return false;
    }
    return true;
}

bool ClearQAMTuner::checkCurrentChannel()
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("checkCurrentChannel");
    if (!tuneToChannel(static_cast<int>(m_currentChannel), kFirstProgram, 0))
        return false;

    SampleCallback *buffer = dynamic_cast<SampleCallback *>(m_sampleGrabberCallback.p);
    if (!buffer)
        SORVANE_THROW_LOGGED("dynamic_cast<SampleCallback*>(m_sampleGrabberCallback.p) failed!)", TestResult::FAIL(), 0,
                             nullptr);
    buffer->reset();
    kel::System::mssleep(kCollectDelay);
    if (buffer->bytesReceived() == 0) {
        SORVANE_LOG_DETAIL(LogTexts::NO_PACKETS);
        return false;
    }

    const int program = ClearProgramSearch::processTransportStream(*buffer);
    SORVANE_LOG_DETAIL("processTransportStream returns " << program);
    if (program == ClearProgramSearch::kNoClearProgram) {
        SORVANE_LOG_DETAIL(LogTexts::NO_CLEAR_PROGRAM);
        return false;
    }
    return checkChannel(static_cast<int>(m_currentChannel), program, 0);
}

// The found channel's stream is measured from here to the graph's stop: it has been tuned and
// settled, and it keeps arriving while the picture stays on screen.
void ClearQAMTuner::signalFound()
{
    DigitalTuner::signalFound();
    SampleCallback *buffer = dynamic_cast<SampleCallback *>(m_sampleGrabberCallback.p);
    if (buffer)
        m_channelStream.markFound(*buffer);
}

void ClearQAMTuner::cleanUpCOMInterfaces()
{
    // The streaming thread stops, then the grabber lets go of the callback, before the callback goes.
    if (m_mediaControl)
        m_mediaControl->Stop();
    keepChannelStream(dynamic_cast<SampleCallback *>(m_sampleGrabberCallback.p));
    if (m_sampleGrabber)
        m_sampleGrabber->SetCallback(nullptr, kBufferMode);
    m_sampleGrabberCallback.Release();
    m_tuningSpace.Release();
    DigitalTuner::cleanUpCOMInterfaces();
}

} // namespace sorvane
