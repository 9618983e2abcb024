#include "AnalogTuner.h"
#include "CaptureLog.h"
#include "CaptureUtil.h"
#include "CountryDialog.h"
#include "ErrorHandler.h"
#include "LogTexts.h"
#include "MediaTypeOwner.h"
#include "ModuleRegistration.h"
#include "ScopeExit.h"

#include <boost/bind/bind.hpp>
#include <boost/ref.hpp>
#include <kel/AssertionFailure.h>
#include <kel/System.h>
#include <ruvo/DiagModule.h>
#include <amvideo.h>
#include <cstdlib>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

const uint32_t kMinTVChannel = 2;
const uint32_t kMaxTVChannel = 60;
// The FM sweep's raster and how close to the end frequency still counts as inside.
const double kFMStepMHz = 0.2;
const double kFMTolerance = 0.00001;
const double kHertzPerMHz = 1000000.0;
// The sweep tunes whole hertz through an int: a frequency above this, below 0 or no number at
// all cannot be tuned, and stepping from or towards it by a fifth of a megahertz might never end.
const uint32_t kHighestTunableMHz = 2147;
// The sweep waits this long before its first frequency, so that the graph can settle.
const uint32_t kFMSettleDelay = 1000;
// A refused tune is not retried at once.
const uint32_t kRefusedTuneDelay = 10;
// TunerInputType values, and the "leave the input as it is" of the FM sweep.
const int kCableInput = TunerInputCable;
const int kAntennaInput = TunerInputAntenna;
const int kCurrentInput = -1;
const int kNoMinorChannel = -1;
const int kFMTextLength = 5;

struct RenderChoice {
    const GUID *category;
    const GUID *mediaType;
};

// Tried in turn until one renders completely. Capture before preview: a card without a
// preview pin gets a Smart Tee, whose preview output only renders partly
// (VFW_S_NOPREVIEWPIN); rendering it and then the capture pin would make two renderers.
const RenderChoice kRenderChoices[] = {
    {&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Interleaved}, {&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video},
    {&PIN_CATEGORY_PREVIEW, &MEDIATYPE_Interleaved}, {&PIN_CATEGORY_PREVIEW, &MEDIATYPE_Video},
    {&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Stream},
};

kel::String hrText(HRESULT hr)
{
    return ErrorHandler::errorMessageFromHr(hr);
}

bool isSetAndTrue(ruvo::Parameter *parameter)
{
    return parameter->isset() && parameter->value().valueBool();
}

} // namespace

AnalogTuner::AnalogTuner(const ruvo::DiagDevice &device, const kel::String &name)
    : TVTuner(device, name), m_mode(AMTUNER_MODE_TV), m_checking(false), m_tryAntenna(true), m_tryCable(true)
{
    m_minChannel = kMinTVChannel;
    m_maxChannel = kMaxTVChannel;
    m_startChannelParam = g_TVStartChannel;
    m_endChannelParam = g_TVEndChannel;
}

void AnalogTuner::captureToScreen()
{
    SORVANE_TRACE();
    m_mode = AMTUNER_MODE_TV;
    CaptureBase::captureToScreen();
}

void AnalogTuner::captureToFile(const kel::String &fileName)
{
    SORVANE_TRACE();
    m_mode = AMTUNER_MODE_TV;
    CaptureBase::captureToFile(fileName);
}

void AnalogTuner::checkTVSignal()
{
    SORVANE_TRACE();
    m_mode = AMTUNER_MODE_TV;
    TVTuner::checkTVSignal();
}

void AnalogTuner::checkFMRadioSignal()
{
    SORVANE_TRACE();
    ScopeExit cleanUp(boost::bind(&AnalogTuner::cleanUpAll, this));

    m_mode = AMTUNER_MODE_FM_RADIO;
    setupGraph();
    setupDevice();

    FMSweep sweep;
    sweep.start = frequencyFrom(g_FMRadioStartChannel);
    sweep.end = frequencyFrom(g_FMRadioEndChannel);
    if (sweep.start > sweep.end)
        sweep.end = sweep.start;
    sweep.current = sweep.start;
    SORVANE_LOG_DETAIL("FM sweep from " << kel::String::fromDouble(sweep.start) << " to "
                                        << kel::String::fromDouble(sweep.end) << " MHz");
    run(boost::bind(&AnalogTuner::stepFMSweep, this, boost::ref(sweep)), true, true);
}

double AnalogTuner::frequencyFrom(ruvo::Parameter *parameter)
{
    const double megahertz = parameter->value().valueDouble();
    if (megahertz >= 0.0 && megahertz <= kHighestTunableMHz)
        return megahertz;
    g_badParametersRange->setVariable("ParameterName", ruvo::Value(parameter->key()))
        .setVariable("ParameterValue", ruvo::Value(kel::String::fromDouble(megahertz)))
        .setVariable("RangeMin", ruvo::Value(uint32_t(0)))
        .setVariable("RangeMax", ruvo::Value(kHighestTunableMHz));
    THROW_ERROR(ruvo::TestResult::BADPARAMS(), 0, g_badParametersRange);
}

bool AnalogTuner::stepFMSweep(FMSweep &sweep)
{
    if (sweep.current == sweep.start)
        kel::System::mssleep(kFMSettleDelay);
    if (sweep.current >= sweep.end + kFMTolerance)
        THROW_ERROR(ruvo::TestResult::NOSIGNAL(), 0, g_errorNoSignal);
    if (ruvo::DiagModule::checkForStop())
        THROW_ERROR(ruvo::TestResult::USERABORTED(), 0, nullptr);

    reportFMProgress(sweep.current);
    if (checkChannel(static_cast<int>(sweep.current * kHertzPerMHz), kNoMinorChannel, kCurrentInput)) {
        SORVANE_LOG_DETAIL("Found FM signal at " << kel::String::fromDouble(sweep.current, 1));
        return true;
    }

    // A one-frequency sweep has no width to measure progress by: rather than divide by zero
    // and report whatever a non-finite value converts to, it reports 0.
    const double fraction = sweep.end > sweep.start ? (sweep.current - sweep.start) / (sweep.end - sweep.start) : 0.0;
    ruvo::DiagModule::percentDone(static_cast<int>(fraction * 100.0));
    sweep.current += kFMStepMHz;
    return false;
}

void AnalogTuner::reportFMProgress(double megahertz)
{
    const kel::String text = kel::String::fromDouble(megahertz, 1).substring(0, kFMTextLength);
    g_testingChannel->setVariable("channel", ruvo::Value(text));
    ruvo::DiagModule::progress(g_testingChannel);
}

void AnalogTuner::setupDevice()
{
    SORVANE_TRACE();
    if (m_mode == AMTUNER_MODE_TV && !m_device.deviceCapabilities().isCapable(ruvo::DeviceCapability::AnalogTVTuner()))
        THROW_WARNING(ruvo::TestResult::NOTSUPPORTED(), 0, g_warnHardwareDoesNotSupportAnalogTVInput);

    CaptureBase::setupDevice();

    m_tuner.Release();
    HRESULT hr =
        m_captureGraphBuilder->FindInterface(&PIN_CATEGORY_CAPTURE, nullptr, m_srcFilter, IID_PPV_ARGS(&m_tuner));
    if (FAILED(hr) || !m_tuner) {
        SORVANE_WARN_FAILED("FindInterface(IID_IAMTVTuner) failed: ", hr, ruvo::TestResult::NOTSUPPORTED(),
                            g_warnHardwareDoesNotSupportAnalogTVInput);
    }

    if (m_mode == AMTUNER_MODE_TV)
        routeCrossbar();

    hr = m_tuner->put_Mode(static_cast<AMTunerModeType>(m_mode));
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("put_Mode failed: ", hr);
}

void AnalogTuner::routeCrossbar()
{
    SORVANE_TRACE();
    CComPtr<IAMCrossbar> crossbar;
    m_captureGraphBuilder->FindInterface(&PIN_CATEGORY_CAPTURE, nullptr, m_srcFilter, IID_PPV_ARGS(&crossbar));
    if (!crossbar) {
        SORVANE_LOG_DETAIL("no crossbar");
        return;
    }
    long outputs = 0;
    long inputs = 0;
    if (FAILED(crossbar->get_PinCounts(&outputs, &inputs)))
        return;

    for (long input = 0; input < inputs && outputs > 0; ++input) {
        long related = 0;
        long type = 0;
        if (FAILED(crossbar->get_CrossbarPinInfo(TRUE, input, &related, &type)) || type != PhysConn_Video_Tuner)
            continue;
        for (long output = 0; output < outputs; ++output) {
            if (crossbar->CanRoute(output, input) != S_OK)
                continue;
            const HRESULT hr = crossbar->Route(output, input);
            SORVANE_LOG_DETAIL("crossbar Route(" << output << ", " << input << ") returns " << hrText(hr));
            if (SUCCEEDED(hr))
                return;
        }
    }
}

void AnalogTuner::renderToScreen()
{
    kel::TraceLogger trace(sorvaneLogger(), "AnalogTuner::renderToScreen", __FILE__, __LINE__);
    KEL_ASSERT(m_graphManager);
    KEL_ASSERT(m_srcFilter);

    if (renderVideoStream())
        resizeWindowToVideo();

    const HRESULT hr =
        m_captureGraphBuilder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, m_srcFilter, nullptr, nullptr);
    SORVANE_LOG_DETAIL("RenderStream(PIN_CATEGORY_CAPTURE, MEDIATYPE_Audio, m_srcFilter, NULL, NULL) returns "
                       << hrText(hr));
}

bool AnalogTuner::renderVideoStream()
{
    HRESULT hr = E_FAIL;
    for (const RenderChoice &choice : kRenderChoices) {
        hr = m_captureGraphBuilder->RenderStream(choice.category, choice.mediaType, m_srcFilter, nullptr, nullptr);
        SORVANE_LOG_DETAIL("RenderStream(" << CaptureUtil::subTypeToString(*choice.mediaType)
                                           << ", m_srcFilter, NULL, NULL) returns " << hrText(hr));
        if (hr == S_OK)
            return true;
    }
    if (FAILED(hr)) {
        SORVANE_THROW_LOGGED("no video stream renders: " << hrText(hr) << "\ngraph:\n"
                                                         << CaptureUtil::graphToString(m_graphManager),
                             ruvo::TestResult::FAIL(), hr, g_errorCreatingFilterGraph);
    }
    return false;
}

void AnalogTuner::resizeWindowToVideo()
{
    SORVANE_LOG_DETAIL("Attempting to read the stream configuration to use to resize window");
    CComPtr<IAMStreamConfig> config;
    HRESULT hr = m_captureGraphBuilder->FindInterface(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Interleaved, m_srcFilter,
                                                      IID_PPV_ARGS(&config));
    if (FAILED(hr)) {
        SORVANE_LOG_DETAIL(
            "IGraphBuilder::FindInterface(IID_IAMStreamConfig) interleaved failed trying video: " << hrText(hr));
        config.Release();
        hr = m_captureGraphBuilder->FindInterface(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, m_srcFilter,
                                                  IID_PPV_ARGS(&config));
        if (FAILED(hr))
            SORVANE_LOG_DETAIL("IGraphBuilder::FindInterface(IID_IAMStreamConfig) video failed:" << hrText(hr));
    }
    if (!config) {
        SORVANE_LOG_DETAIL("Stream Config is NULL");
        return;
    }
    SORVANE_LOG_DETAIL("Got Stream Config");

    MediaTypeOwner format;
    hr = config->GetFormat(format.receive());
    if (FAILED(hr) || !format) {
        SORVANE_LOG_ERROR("IAMStreamConfig::GetFormat failed: " << hrText(hr));
        return;
    }
    if (format->formattype != FORMAT_VideoInfo || !format->pbFormat || format->cbFormat < sizeof(VIDEOINFOHEADER))
        return;
    const BITMAPINFOHEADER &header = reinterpret_cast<const VIDEOINFOHEADER *>(format->pbFormat)->bmiHeader;
    if (!m_hwnd) {
        SORVANE_LOG_DETAIL("no window to fit to " << header.biWidth << " by " << std::abs(header.biHeight));
        return;
    }
    resizeWindowForClient(header.biWidth, std::abs(header.biHeight));
    resizeVideoWindow();
}

void AnalogTuner::cleanUpCOMInterfaces()
{
    SORVANE_TRACE();
    m_tuner.Release();
    CaptureBase::cleanUpCOMInterfaces();
}

bool AnalogTuner::tuneToChannel(int channel, int /*minorChannel*/, int inputType)
{
    kel::TraceLogger trace(sorvaneLogger(), "AnalogTuner::tuneToChannel", __FILE__, __LINE__);
    const kel::String inputName = CaptureUtil::tunerTypeToString(inputType);
    SORVANE_LOG_DETAIL(inputName << " channel " << channel);
    // Closing the video window releases the graph and the tuner with it.
    if (!m_tuner)
        return false;

    if (inputType >= 0) {
        long input = 0;
        HRESULT hr = m_tuner->get_ConnectInput(&input);
        if (FAILED(hr)) {
            SORVANE_LOG_ERROR("get_ConnectInput failed: " << hrText(hr));
            return false;
        }
        SORVANE_LOG_DETAIL("get_ConnectInput returns " << input);
        hr = m_tuner->put_InputType(input, static_cast<TunerInputType>(inputType));
        if (FAILED(hr)) {
            SORVANE_LOG_ERROR("put_InputType failed: " << hrText(hr));
            return false;
        }
    }

    if (FAILED(m_tuner->put_Channel(channel, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT))) {
        SORVANE_LOG(kel::LOG_WARNING, "Cannot tune to " << inputName << " channel " << channel);
        kel::System::mssleep(kRefusedTuneDelay);
        return false;
    }
    SORVANE_LOG_DETAIL("put_Channel " << channel << " succeeded");

    if (inputType >= 0) {
        long found = 0;
        m_tuner->AutoTune(channel, &found);
        SORVANE_LOG_DETAIL("AutoTune found = " << found);
    }
    kel::System::mssleep(m_settleDelay);
    return true;
}

void AnalogTuner::initializeChannelIteration()
{
    SORVANE_TRACE();
    TVTuner::initializeChannelIteration();
    const kel::String signalType = g_signalType->value().toKELString().toUpper();
    m_tryAntenna = signalType != kel::String(L"CABLE");
    m_tryCable = signalType != kel::String(L"ANTENNA");
}

// Antenna first, then cable.
bool AnalogTuner::checkCurrentChannel()
{
    SORVANE_TRACE();
    if (m_tryAntenna) {
        // Set before every check and never cleared: it records that a check ran, it is no lock.
        m_checking = true;
        if (checkChannel(static_cast<int>(m_currentChannel), kNoMinorChannel, kAntennaInput))
            return true;
    }
    if (m_tryCable) {
        m_checking = true;
        return checkChannel(static_cast<int>(m_currentChannel), kNoMinorChannel, kCableInput);
    }
    return false;
}

uint32_t AnalogTuner::checksPerChannel() const
{
    return g_checksPerChannel->isset() ? g_checksPerChannel->value().valueUint32() : 1;
}

bool AnalogTuner::isSignalPresent()
{
    SORVANE_TRACE();
    if (!m_tuner)
        return false;
    const uint32_t checks = checksPerChannel();
    for (uint32_t check = 1; check <= checks; ++check) {
        SORVANE_LOG_DETAIL("check " << check << " of " << checks);
        SORVANE_LOG_DETAIL("call m_tuner->SignalPresent");
        long strength = AMTUNER_NOSIGNAL;
        const HRESULT hr = m_tuner->SignalPresent(&strength);
        SORVANE_LOG_DETAIL(LogTexts::SIGNAL_PRESENT_ANSWER << kel::String::hex(static_cast<uint32_t>(hr), true) << "/"
                                                           << strength);
        if (SUCCEEDED(hr) && strength == AMTUNER_SIGNALPRESENT) {
            SORVANE_LOG_DETAIL("isSignalPresent found signal");
            return true;
        }
        if (ruvo::DiagModule::checkForStop())
            return false;
    }
    SORVANE_LOG_DETAIL("isSignalPresent no signal");
    return false;
}

void AnalogTuner::preCheckAction()
{
    SORVANE_TRACE();
    if (isSetAndTrue(g_askCountryCode1))
        askForCountry();
    else
        setCountryCode(CaptureUtil::getDefaultCountryCode());
}

void AnalogTuner::postCheckErrorAction()
{
    SORVANE_TRACE();
    if (isSetAndTrue(g_askCountryCode2))
        askForCountry();
}

void AnalogTuner::askForCountry()
{
    CountryDialog dialog(CountryDialog::allCountries());
    const int code = dialog.ask(GetConsoleWindow(), CaptureUtil::getDefaultCountryCode());
    if (code == 0)
        THROW_ERROR(ruvo::TestResult::USERABORTED(), 0, nullptr);
    // A dialog that could not be shown answers -1, which goes to the tuner like any code:
    // the tuner refuses it and keeps its country, and the channel test still runs.
    setCountryCode(code);
}

// A country the tuner refuses leaves it on its own; the channel test still runs.
void AnalogTuner::setCountryCode(long code)
{
    if (!m_tuner)
        return;
    const HRESULT hr = m_tuner->put_CountryCode(code);
    if (FAILED(hr))
        SORVANE_LOG_ERROR("put_CountryCode(" << code << ") failed: " << hrText(hr));
    else
        SORVANE_LOG_DETAIL("put_CountryCode(" << code << ")");
}

} // namespace sorvane
