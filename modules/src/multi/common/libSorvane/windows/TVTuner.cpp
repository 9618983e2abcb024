#include "TVTuner.h"
#include "CaptureLog.h"
#include "ErrorHandler.h"
#include "ModuleRegistration.h"
#include "ScopeExit.h"

#include <boost/bind/bind.hpp>
#include <kel/AssertionFailure.h>
#include <kel/System.h>
#include <ruvo/DiagModule.h>
#include <ruvo/MessageBox2.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

const uint32_t kDefaultSettleDelay = 1000;
// Before the first channel the graph gets a moment to settle.
const uint32_t kGraphSettleDelay = 1000;
// A channel with signal stays on screen a while before the test ends.
const uint32_t kPictureShownDelay = 5000;
const int kMaxAttempts = 2;
const uint32_t kMillisecondsPerSecond = 1000;

// The cable question's message-box settings; the framework's headers give these values no
// names. Answers 5 and 6 end the test, any other answer tries the range again.
const int kCableBoxType = 0;
const int kCableBoxOptions = 1;
const int kCableBoxLooks = 0;
const bool kCableBoxFlag = true;
const int kCableBoxAbort = 5;
const int kCableBoxAbortToo = 6;

} // namespace

TVTuner::TVTuner(const ruvo::DiagDevice &device, const kel::String &name)
    : CaptureBase(device, name), m_settleDelay(kDefaultSettleDelay), m_startChannel(0), m_endChannel(0),
      m_currentChannel(0), m_minChannel(0), m_maxChannel(0), m_startChannelParam(nullptr), m_endChannelParam(nullptr)
{
}

void TVTuner::checkTVSignal()
{
    SORVANE_TRACE();
    ScopeExit cleanUp(boost::bind(&TVTuner::cleanUpAll, this));

    setupGraph();
    setupDevice();
    renderToScreen();
    preCheckAction();

    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        try {
            runOneAttempt();
            break;
        } catch (const CaptureException &e) {
            if (e.getResult() != ruvo::TestResult::NOSIGNAL() || attempt > 0)
                throw;
            // The picture and the graph stay while the user checks the cable.
            if (!userWantsRetry())
                THROW_ERROR(ruvo::TestResult::USERABORTED(), 0, nullptr);
            postCheckErrorAction();
        }
    }
    postCheckAction();
}

void TVTuner::runOneAttempt()
{
    SORVANE_TRACE();
    ruvo::DiagModule::resetPercentDone();
    initializeChannelIteration();
    run(boost::bind(&TVTuner::iterateChannels, this), true, true);
    hideVideoWindow();
}

bool TVTuner::userWantsRetry()
{
    SORVANE_TRACE();
    if (g_checkTVCable->isset() && !g_checkTVCable->value().valueBool())
        return true;

    ruvo::MessageBox2 *box = ruvo::DiagModule::createMessageBox2(
        ruvo::RuvoString(m_windowTitle), g_checkCableConnectedMessage->localizedString(), kCableBoxType,
        kCableBoxOptions, kCableBoxLooks, kCableBoxFlag);
    if (!box->display()) {
        SORVANE_LOG_DETAIL("DisplayRetryDialog()--MessageBox2::display() returned false");
        return true;
    }
    const uint32_t timeout = g_msgBoxTimeout->value().valueUint32() * kMillisecondsPerSecond;
    if (!box->wait(timeout)) {
        SORVANE_LOG_DETAIL("DisplayRetryDialog()--MessageBox2::wait() returned false");
        return true;
    }
    const int answer = box->getReturn();
    SORVANE_LOG_DETAIL("DisplayRetryDialog() answer " << answer);
    return answer != kCableBoxAbort && answer != kCableBoxAbortToo;
}

uint32_t TVTuner::channelFrom(ruvo::Parameter *parameter) const
{
    const uint32_t channel = parameter->value().valueUint32();
    if (channel < m_minChannel || channel > m_maxChannel) {
        g_badParametersRange->setVariable("ParameterName", ruvo::Value(parameter->key()))
            .setVariable("ParameterValue", ruvo::Value(channel))
            .setVariable("RangeMin", ruvo::Value(m_minChannel))
            .setVariable("RangeMax", ruvo::Value(m_maxChannel));
        THROW_ERROR(ruvo::TestResult::BADPARAMS(), 0, g_badParametersRange);
    }
    return channel;
}

void TVTuner::initializeChannelIteration()
{
    SORVANE_TRACE();
    KEL_ASSERT(m_startChannelParam);
    KEL_ASSERT(m_endChannelParam);
    m_startChannel = channelFrom(m_startChannelParam);
    m_endChannel = channelFrom(m_endChannelParam);
    if (m_endChannel < m_startChannel)
        THROW_ERROR(ruvo::TestResult::BADPARAMS(), 0, nullptr);
    m_currentChannel = m_startChannel;
    SORVANE_LOG_DETAIL("channels " << m_startChannel << " to " << m_endChannel);
}

bool TVTuner::iterateChannels()
{
    SORVANE_TRACE();
    if (m_currentChannel == m_startChannel)
        kel::System::mssleep(kGraphSettleDelay);

    if (m_currentChannel > m_endChannel) {
        g_errorNoSignalWithTip->setVariable("startchannel", ruvo::Value(m_startChannel))
            .setVariable("endchannel", ruvo::Value(m_endChannel));
        THROW_ERROR(ruvo::TestResult::NOSIGNAL(), 0, g_errorNoSignalWithTip);
    }
    if (ruvo::DiagModule::checkForStop())
        THROW_ERROR(ruvo::TestResult::USERABORTED(), 0, nullptr);

    reportProgress();
    if (checkCurrentChannel()) {
        signalFound();
        kel::System::mssleep(kPictureShownDelay);
        return true;
    }

    ++m_currentChannel;
    const double fraction = m_endChannel > m_startChannel
                                ? double(m_currentChannel - m_startChannel) / double(m_endChannel - m_startChannel)
                                : 0.0;
    ruvo::DiagModule::percentDone(static_cast<int>(fraction * 100.0 + 0.5));
    return false;
}

void TVTuner::reportProgress()
{
    g_testingChannel->setVariable("channel", ruvo::Value(kel::String::fromUInt(m_currentChannel)));
    ruvo::DiagModule::progress(g_testingChannel);
}

bool TVTuner::checkChannel(int channel, int minorChannel, int inputType)
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("checkChannel(" << channel << ", " << minorChannel << ", " << inputType << ")");
    return tuneToChannel(channel, minorChannel, inputType) && isSignalPresent();
}

void TVTuner::preCheckAction() {}

void TVTuner::postCheckAction() {}

void TVTuner::postCheckErrorAction() {}

void TVTuner::signalFound()
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("found signal on channel " << m_currentChannel);
}

// A tuner records its video, and its sound when the card delivers any.
void TVTuner::doRenderToFile()
{
    HRESULT hr =
        m_captureGraphBuilder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, m_srcFilter, nullptr, m_mux);
    SORVANE_LOG_DETAIL("RenderStream(PIN_CATEGORY_CAPTURE, MEDIATYPE_Video, m_srcFilter, NULL, m_mux) returns "
                       << ErrorHandler::errorMessageFromHr(hr));
    if (FAILED(hr))
        THROW_ERROR(ruvo::TestResult::FAIL(), hr, g_errorCreatingFilterGraph);

    hr = m_captureGraphBuilder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, m_srcFilter, nullptr, m_mux);
    SORVANE_LOG_DETAIL("RenderStream(PIN_CATEGORY_CAPTURE, MEDIATYPE_Audio, m_srcFilter, NULL, m_mux) returns "
                       << ErrorHandler::errorMessageFromHr(hr));
}

} // namespace sorvane
