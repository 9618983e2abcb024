#include "DVBTuner.h"
#include "CaptureLog.h"
#include "CaptureUtil.h"
#include "CoTaskMemPtr.h"
#include "CountryCodeManager.h"
#include "CountryDialog.h"
#include "DTMBFrequencyPlan.h"
#include "ErrorHandler.h"
#include "ModuleRegistration.h"
#include "Mpeg2StreamAnalyzer.h"
#include "SampleCallback.h"

#include <kel/System.h>
#include <ruvo/DiagModule.h>
#include <uuids.h>
#include <vector>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

using ruvo::TestResult;

namespace {

const wchar_t *const kDTMBNames[] = {L"dmb-th", L"dtmb", L"dmbth"};
const int kQualityNeeded = 51;
const uint32_t kBufferDelay = 50;
const int kUserCancelled = 0;
const int kNoCountry = -1;
// The values GetGeoInfoW's result is compared with: ERROR_INVALID_PARAMETER and
// ERROR_INSUFFICIENT_BUFFER.
const int kGeoInvalidParameter = 87;
const int kGeoInsufficientBuffer = 122;
const long kBufferMode = 1;

kel::String hrText(HRESULT hr)
{
    return ErrorHandler::errorMessageFromHr(hr);
}

} // namespace

DVBTuner::DVBTuner(const ruvo::DiagDevice &device, const kel::String &name)
    : DigitalTuner(device, name), m_isDTMB(false)
{
    SORVANE_LOG_DETAIL("DVBTuner ctor");
}

DVBTuner::~DVBTuner()
{
    SORVANE_LOG_DETAIL("DVBTuner dtor");
}

void DVBTuner::setupNetworkProvider()
{
    SORVANE_TRACE();
    SORVANE_LOG_DETAIL("Creating Network Provider");
    m_networkProvider.Release();
    const HRESULT hr = m_networkProvider.CoCreateInstance(CLSID_DVBTNetworkProvider, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("IBaseFilter::CoCreateInstance DVBT Network Provider failed: ", hr);
    SORVANE_LOG_DETAIL("Adding Network Provider filter to graph");
    addFilter(m_networkProvider, kel::String(L"DVB-T Network Provider"));
    SORVANE_LOG_DETAIL("Created and added");
}

void DVBTuner::setupDevice()
{
    kel::TraceLogger trace(sorvaneLogger(), "DVBTuner::setupDevice", __FILE__, __LINE__);
    DigitalTuner::doSetupDevice(true, true, false);
    // The quality check reads the grabber's last sample.
    if (m_sampleGrabber)
        m_sampleGrabber->SetBufferSamples(TRUE);
    attachPacketBuffer();
    setupTuningSpace();
    renderDemuxPins();

    m_isDTMB = containsDTMB(m_device.name()) || filterIsDTMB(m_srcFilter) || filterIsDTMB(m_receiverFilter);
    SORVANE_LOG_DETAIL("m_isDTMB = " << m_isDTMB);
    if (m_isDTMB) {
        SORVANE_LOG_DETAIL("DTMB tuner detected.  Setting channel range: 13-56\n");
        setChannelRange(DTMBFrequencyPlan::kFirstChannel, DTMBFrequencyPlan::kLastChannel);
        return;
    }
    setupCountry();
}

void DVBTuner::attachPacketBuffer()
{
    m_packetBuffer.Release();
    if (!m_sampleGrabber)
        return;
    m_packetBuffer = new SampleCallback;
    const HRESULT hr = m_sampleGrabber->SetCallback(m_packetBuffer, kBufferMode);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ISampleGrabber::SetCallback failed: " << hrText(hr));
        m_packetBuffer.Release();
    }
}

void DVBTuner::setupTuningSpace()
{
    SORVANE_LOG_DETAIL("Getting DVB-T tuning space");
    m_tuningSpace.Release();
    const CComPtr<ITuningSpace> space = getTuningSpace(kel::String(L"DVB-T"));
    m_tuningSpace = space.p;
    if (!m_tuningSpace)
        SORVANE_GRAPH_REFUSED("Cannot get DVB-T tuning space");
    SORVANE_LOG_DETAIL("Creating DVBTuningSpace2");
    CComPtr<IDVBTuningSpace2> dvbSpace;
    HRESULT hr = m_tuningSpace.QueryInterface(&dvbSpace);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("ITuningSpace::QueryInterface(IDVBTuningSpace2) failed: ", hr);
    SORVANE_LOG_DETAIL("Setting System Type DVB");
    hr = dvbSpace->put_SystemType(DVB_Terrestrial);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("DVBTuningSpace2::put_SystemType(DVB_Terrestrial) failed: ", hr);
}

void DVBTuner::renderDemuxPins()
{
    SORVANE_LOG_DETAIL("Demux::EnumPins");
    CComPtr<IEnumPins> pins;
    const HRESULT hr = m_demuxFilter->EnumPins(&pins);
    if (FAILED(hr) || !pins)
        SORVANE_GRAPH_FAILED("ERROR: Demux::EnumPins failed: ", hr);
    SORVANE_LOG_DETAIL("Locate and render output pins on Demux");
    bool videoRendered = false;
    CComPtr<IPin> pin;
    while (pins->Next(1, &pin, nullptr) == S_OK) {
        CComPtr<IPin> peer;
        PIN_DIRECTION direction = PINDIR_INPUT;
        pin->QueryDirection(&direction);
        if (direction != PINDIR_OUTPUT) {
            pin.Release();
            continue;
        }
        if (SUCCEEDED(pin->ConnectedTo(&peer)) && peer) {
            SORVANE_LOG_DETAIL("pin is connected");
            // The base's rendering may already have shown the video.
            if (isVideoPin(pin))
                videoRendered = true;
        } else if (isSectionsPin(pin)) {
            SORVANE_LOG_DETAIL("isSectionsPin");
        } else if (isVideoPin(pin)) {
            if (videoRendered) {
                SORVANE_LOG_DETAIL("isVideoPin, already rendered");
            } else {
                SORVANE_LOG_DETAIL("isVideoPin");
                SORVANE_LOG_DETAIL("call renderFromPin");
                long result = S_OK;
                if (!renderFromPin(pin, result))
                    SORVANE_THROW_LOGGED("renderFromPin failed", TestResult::FAIL(), result, g_errorCannotRunDVBTest);
                videoRendered = true;
            }
        }
        pin.Release();
    }
}

void DVBTuner::setChannelRange(uint32_t first, uint32_t last)
{
    m_minChannel = first;
    m_startChannel = first;
    m_maxChannel = last;
    m_endChannel = last;
}

void DVBTuner::setupCountry()
{
    SORVANE_LOG_DETAIL("Attempting to get frequency mapping for DVB-T cards");
    SORVANE_LOG_DETAIL("m_networkProvider:\n" << CaptureUtil::filterToString(m_networkProvider));
    SORVANE_LOG_DETAIL("graph:\n" << CaptureUtil::graphToString(m_graphManager));

    CComPtr<IFrequencyMap> frequencyMap;
    HRESULT hr = m_networkProvider.QueryInterface(&frequencyMap);
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("IBaseFilter::QueryInterface(IFrequencyMap) failed: ", hr);
    readSupportedCountries(frequencyMap);
    const int country = chooseCountry();
    hr = frequencyMap->put_CountryCode(static_cast<ULONG>(country));
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("***ERROR: IFrequencyMap::put_CountryCode failed: ", hr);
    loadCountryChannels(frequencyMap, country);
}

void DVBTuner::readSupportedCountries(IFrequencyMap *frequencyMap)
{
    SORVANE_LOG_DETAIL("IFrequencyMap:get_CountryCodeList");
    ULONG count = 0;
    CoTaskMemPtr<ULONG> codes;
    const HRESULT hr = frequencyMap->get_CountryCodeList(&count, codes.receive());
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("IFrequencyMap:get_CountryCodeList failed: ", hr);
    m_supportedCountryCodes.clear();
    for (ULONG i = 0; codes && i < count; ++i) {
        const int code = static_cast<int>(codes.get()[i]);
        if (!m_supportedCountryCodes.contains(code))
            m_supportedCountryCodes.add(code);
    }
}

int DVBTuner::chooseCountry()
{
    SORVANE_LOG_DETAIL("***Asking for Country");
    const int country = askForCountry();
    if (country == kUserCancelled) {
        SORVANE_LOG_DETAIL("***Exiting due to user abort on country dialog");
        THROW_ERROR(TestResult::USERABORTED(), 0, nullptr);
    }
    if (country == kNoCountry)
        SORVANE_WARN_LOGGED("***Skipping put_CountryCode() because of unexpected ::DialogBox() error: " << country,
                            TestResult::MISCONFIGURED(), 0, g_setCountryName);
    return country;
}

void DVBTuner::loadCountryChannels(IFrequencyMap *frequencyMap, int country)
{
    ULONG count = 0;
    CoTaskMemPtr<ULONG> frequencies;
    const HRESULT hr =
        frequencyMap->get_DefaultFrequencyMapping(static_cast<ULONG>(country), &count, frequencies.receive());
    if (FAILED(hr))
        SORVANE_GRAPH_FAILED("IFrequencyMap:get_DefaultFrequencyMapping failed: ", hr);
    kel::Array<uint32_t> list;
    for (ULONG i = 0; frequencies && i < count; ++i)
        list.add(static_cast<uint32_t>(frequencies.get()[i]));
    const int loaded = m_guideStore.loadGuideData(country, list);
    // A map of one channel or none leaves the range 1 to 0: nothing to scan.
    const uint32_t last = loaded > 0 ? static_cast<uint32_t>(loaded - 1) : 0;
    setChannelRange(1, last);
    SORVANE_LOG_DETAIL("Set DVB-T Channel Range: 1-" << last);
}

int DVBTuner::askForCountry()
{
    kel::TraceLogger trace(sorvaneLogger(), "askForCountry()", __FILE__, __LINE__);
    const CountryCodeManager countries;
    const kel::String wanted = g_country->isset() ? g_country->value().toKELString() : kel::String();
    if (wanted.isEmpty() || wanted == kel::String(L"UserDefined"))
        return countryFromDialog();

    const CountryCode *record = countries.countryCodeByString(wanted.toLower());
    if (record)
        return record->countryCode();
    return countryFromLocation(countries);
}

int DVBTuner::countryFromLocation(const CountryCodeManager &countries)
{
    const GEOID location = GetUserGeoID(GEOCLASS_NATION);
    if (location == GEOID_NOT_AVAILABLE)
        return kNoCountry;
    const int length = GetGeoInfoW(location, GEO_ISO2, nullptr, 0, 0);
    if (length <= 0)
        return kNoCountry;
    std::vector<wchar_t> text(static_cast<size_t>(length), L'\0');
    const int written = GetGeoInfoW(location, GEO_ISO2, text.data(), length, 0);
    if (written == kGeoInvalidParameter || written == kGeoInsufficientBuffer || written <= 0)
        return kNoCountry;
    const CountryCode *record = countries.countryCodeByString(kel::String(text.data()).toLower());
    SORVANE_LOG_DETAIL("Windows location " << kel::String(text.data()) << (record ? " is known" : " is unknown"));
    return record ? record->countryCode() : kNoCountry;
}

int DVBTuner::countryFromDialog()
{
    if (!ruvo::DiagModule::promptEnabled())
        return kNoCountry;
    const kel::Array<CountryCode> all = CountryDialog::allCountries();
    kel::Array<CountryCode> supported;
    for (int i = 0; i < all.size(); ++i) {
        if (m_supportedCountryCodes.contains(all[i].countryCode()))
            supported.add(all[i]);
    }
    CountryDialog dialog(supported);
    const int result = dialog.ask(GetConsoleWindow(), CaptureUtil::getDefaultCountryCode());
    SORVANE_LOG_DETAIL("***DialogBox returned: " << result);
    return result;
}

bool DVBTuner::tuneToChannel(int channel, int, int)
{
    kel::TraceLogger trace(sorvaneLogger(), "DVBTuner::tuneToChannel", __FILE__, __LINE__);
    SORVANE_LOG_DETAIL("channel = " << channel << ", isDTMB = " << m_isDTMB);
    const bool tuned = m_isDTMB ? tuneDTMB(channel) : m_guideStore.tuneToChannel(m_tuningSpace, m_tuner, channel);
    if (tuned)
        kel::System::mssleep(m_settleDelay);
    return tuned;
}

uint32_t DVBTuner::channelFrequencyKHz(int channel) const
{
    if (!m_isDTMB)
        return m_guideStore.frequencyKHz(channel);
    if (channel < DTMBFrequencyPlan::kFirstChannel || channel > DTMBFrequencyPlan::kLastChannel)
        return 0;
    return DTMBFrequencyPlan::table()[channel];
}

bool DVBTuner::tuneDTMB(int channel)
{
    CComPtr<IDVBTuningSpace2> space;
    m_tuningSpace.QueryInterface(&space);
    if (!space) {
        SORVANE_LOG_ERROR("ERROR: tuneToChannel()/QI of IDVBTuningSpace2 failed");
        return false;
    }
    CComPtr<ITuneRequest> request;
    HRESULT hr = space->CreateTuneRequest(&request);
    if (FAILED(hr) || !request) {
        SORVANE_LOG_ERROR("ERROR: tuneToChannel()/CreateTuneRequest failed: " << hrText(hr));
        return false;
    }
    CComPtr<IDVBTuneRequest> dvbRequest;
    request.QueryInterface(&dvbRequest);
    if (!dvbRequest) {
        SORVANE_LOG_ERROR("ERROR: tuneToChannel()/QI for IDVBTuneRequest failed");
        return false;
    }
    CComPtr<IDVBTLocator> locator;
    hr = locator.CoCreateInstance(CLSID_DVBTLocator, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ERROR: tuneToChannel()/CoCreateInstance failed: " << hrText(hr));
        return false;
    }
    hr = locator->put_CarrierFrequency(static_cast<long>(DTMBFrequencyPlan::table()[channel]));
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ERROR: tuneToChannel()/put_CarrierFrequency failed: " << hrText(hr));
        return false;
    }
    hr = dvbRequest->put_Locator(locator);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ERROR: tuneToChannel()/put_Locator failed: " << hrText(hr));
        return false;
    }
    hr = m_tuner->put_TuneRequest(dvbRequest);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("ERROR: tuneToChannel()/put_TuneRequest failed: " << hrText(hr));
        return false;
    }
    return true;
}

bool DVBTuner::renderFromPin(CComPtr<IPin> pin, long &hr)
{
    const bool rendered = DigitalTuner::renderFromPin(pin, hr);
    if (rendered)
        return true;
    if (hr == VFW_E_INVALIDMEDIATYPE) {
        SORVANE_LOG_DETAIL("renderFromPin succeeds with VFW_E_INVALIDMEDIATYPE");
        return true;
    }
    return false;
}

bool DVBTuner::isSignalPresent()
{
    kel::TraceLogger trace(sorvaneLogger(), "DVBTuner::isSignalPresent", __FILE__, __LINE__);
    int quality = 0;
    if (checkMpeg2SignalQuality(quality) && quality >= kQualityNeeded)
        return true;
    return DigitalTuner::isSignalPresent();
}

bool DVBTuner::checkMpeg2SignalQuality(int &quality)
{
    kel::TraceLogger trace(sorvaneLogger(), "DVBTuner::checkMpeg2SignalQuality", __FILE__, __LINE__);
    CComPtr<ISampleGrabber> grabber;
    HRESULT hr = m_sampleGrabberFilter ? m_sampleGrabberFilter.QueryInterface(&grabber) : E_POINTER;
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("Failed to get the sample grabber iface: " << hrText(hr));
        return false;
    }
    SORVANE_LOG_DETAIL("Got Sample Grabber");
    kel::System::mssleep(kBufferDelay);
    long size = 0;
    hr = grabber->GetCurrentBuffer(&size, nullptr);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("Failed to get the buffer size");
        return false;
    }
    if (size < Mpeg2StreamAnalyzer::kPacketSize) {
        SORVANE_LOG_DETAIL("We were not receiving any stream data");
        return false;
    }
    std::vector<unsigned char> buffer(static_cast<size_t>(size), 0);
    hr = grabber->GetCurrentBuffer(&size, reinterpret_cast<long *>(buffer.data()));
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("Failed to get the sample grabber current buffer " << hrText(hr));
        if (hr == VFW_E_WRONG_STATE)
            SORVANE_LOG_ERROR("No signal present");
        return false;
    }
    SORVANE_LOG_DETAIL("Got Data bufferSize: " << size);
    quality = Mpeg2StreamAnalyzer::signalQuality(buffer.data(), static_cast<int>(size));
    SORVANE_LOG_DETAIL("Signal Quality: " << quality);
    return true;
}

bool DVBTuner::checkCurrentChannel()
{
    // The packet buffer holds the channel under test only.
    SampleCallback *buffer = dynamic_cast<SampleCallback *>(m_packetBuffer.p);
    if (buffer)
        buffer->reset();
    return checkChannel(static_cast<int>(m_currentChannel), 0, 0);
}

// The range is the country's (or the DTMB plan's); a channel parameter that is set narrows it
// and is checked against it, one that is not leaves that end where the plan puts it.
void DVBTuner::initializeChannelIteration()
{
    SORVANE_TRACE();
    const bool startSet = g_digitalStartChannel->isset();
    const bool endSet = g_digitalEndChannel->isset();
    m_startChannel = startSet ? channelFrom(g_digitalStartChannel) : m_minChannel;
    m_endChannel = endSet ? channelFrom(g_digitalEndChannel) : m_maxChannel;
    if ((startSet || endSet) && m_endChannel < m_startChannel)
        THROW_ERROR(TestResult::BADPARAMS(), 0, nullptr);
    m_currentChannel = m_startChannel;
    SORVANE_LOG_DETAIL("channels " << m_startChannel << " to " << m_endChannel);
}

// The found channel's stream is measured from here to the graph's stop: it keeps arriving
// while the picture stays on screen, long enough for the tables' repetition to be judged.
void DVBTuner::signalFound()
{
    DigitalTuner::signalFound();
    SampleCallback *buffer = dynamic_cast<SampleCallback *>(m_packetBuffer.p);
    if (buffer)
        m_channelStream.markFound(*buffer);
}

void DVBTuner::cleanUpCOMInterfaces()
{
    // The streaming thread stops, then the grabber lets go of the buffer, before the buffer goes.
    if (m_packetBuffer) {
        if (m_mediaControl)
            m_mediaControl->Stop();
        keepChannelStream(dynamic_cast<SampleCallback *>(m_packetBuffer.p));
        if (m_sampleGrabber)
            m_sampleGrabber->SetCallback(nullptr, kBufferMode);
        m_packetBuffer.Release();
    }
    m_tuningSpace.Release();
    DigitalTuner::cleanUpCOMInterfaces();
}

bool DVBTuner::containsDTMB(kel::String name)
{
    const kel::String lower = name.toLower();
    for (const wchar_t *marker : kDTMBNames) {
        if (lower.find(kel::String(marker)) != kel::String::npos)
            return true;
    }
    return false;
}

bool DVBTuner::filterIsDTMB(CComPtr<IBaseFilter> filter)
{
    const kel::String name = CaptureUtil::filterName(filter);
    SORVANE_LOG_DETAIL("***filterIsDTMB()--filter name = " << name);
    return containsDTMB(name);
}

} // namespace sorvane
