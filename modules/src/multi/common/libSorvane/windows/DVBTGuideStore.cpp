#include "DVBTGuideStore.h"
#include "CaptureLog.h"
#include "ErrorHandler.h"

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

// VHF band III carries 7 MHz channels; UHF 8 MHz, except in Australia, 7 MHz throughout.
const uint32_t kUhfStartKHz = 470000;
const int kAustralia = 61;
const int kNarrowBandwidth = 7;
const int kWideBandwidth = 8;

kel::String hrText(HRESULT hr)
{
    return ErrorHandler::errorMessageFromHr(hr);
}

} // namespace

DVBTGuideStore::DVBTGuideStore() : m_countryCode(0) {}

int DVBTGuideStore::bandwidthFor(int countryCode, uint32_t frequencyKHz)
{
    if (countryCode == kAustralia || frequencyKHz < kUhfStartKHz)
        return kNarrowBandwidth;
    return kWideBandwidth;
}

int DVBTGuideStore::loadGuideData(int countryCode, const kel::Array<uint32_t> &frequenciesKHz)
{
    m_countryCode = countryCode;
    m_channels.clear();
    const Channel none = {0, 0};
    m_channels.add(none);
    for (int i = 0; i < frequenciesKHz.size(); ++i) {
        const Channel channel = {frequenciesKHz[i], bandwidthFor(countryCode, frequenciesKHz[i])};
        m_channels.add(channel);
    }
    SORVANE_LOG_DETAIL("loadGuideData country " << countryCode << ": " << frequenciesKHz.size() << " channels");
    return m_channels.size();
}

int DVBTGuideStore::channelCount() const
{
    return m_channels.size();
}

uint32_t DVBTGuideStore::frequencyKHz(int channel) const
{
    return channel > 0 && channel < m_channels.size() ? m_channels[channel].frequencyKHz : 0;
}

int DVBTGuideStore::bandwidthMHz(int channel) const
{
    return channel > 0 && channel < m_channels.size() ? m_channels[channel].bandwidthMHz : 0;
}

bool DVBTGuideStore::tuneToChannel(CComPtr<ITuningSpace> tuningSpace, CComPtr<ITuner> tuner, int channel) const
{
    const uint32_t frequency = frequencyKHz(channel);
    SORVANE_LOG_DETAIL("DVBTGuideStore::tuneToChannel " << channel << " at " << static_cast<unsigned>(frequency)
                                                        << " kHz, " << bandwidthMHz(channel) << " MHz");
    if (frequency == 0 || !tuningSpace || !tuner) {
        SORVANE_LOG_ERROR("DVBTGuideStore::tuneToChannel: no channel " << channel);
        return false;
    }
    CComPtr<IDVBTuningSpace2> space;
    tuningSpace.QueryInterface(&space);
    if (!space) {
        SORVANE_LOG_ERROR("DVBTGuideStore: QI of IDVBTuningSpace2 failed");
        return false;
    }
    CComPtr<ITuneRequest> request;
    HRESULT hr = space->CreateTuneRequest(&request);
    if (FAILED(hr) || !request) {
        SORVANE_LOG_ERROR("DVBTGuideStore: CreateTuneRequest failed: " << hrText(hr));
        return false;
    }
    CComPtr<IDVBTuneRequest> dvbRequest;
    request.QueryInterface(&dvbRequest);
    if (!dvbRequest) {
        SORVANE_LOG_ERROR("DVBTGuideStore: QI for IDVBTuneRequest failed");
        return false;
    }
    CComPtr<IDVBTLocator> locator;
    hr = locator.CoCreateInstance(CLSID_DVBTLocator, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("DVBTGuideStore: CoCreateInstance(CLSID_DVBTLocator) failed: " << hrText(hr));
        return false;
    }
    if (FAILED(hr = locator->put_CarrierFrequency(static_cast<long>(frequency))) ||
        FAILED(hr = locator->put_Bandwidth(bandwidthMHz(channel))) || FAILED(hr = dvbRequest->put_Locator(locator))) {
        SORVANE_LOG_ERROR("DVBTGuideStore: locator set-up failed: " << hrText(hr));
        return false;
    }
    hr = tuner->put_TuneRequest(dvbRequest);
    if (FAILED(hr)) {
        SORVANE_LOG_ERROR("DVBTGuideStore: put_TuneRequest failed: " << hrText(hr));
        return false;
    }
    return true;
}

} // namespace sorvane
