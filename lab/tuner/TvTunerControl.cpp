#include "tuner/TvTunerControl.h"

#include "common/DeviceConfig.h"
#include "common/DeviceState.h"
#include "common/LockedRead.h"
#include "tuner/ChannelMap.h"

namespace lab {

namespace {

struct FormatName {
    const wchar_t *name;
    long standard;
};

const FormatName kFormats[] = {
    {L"NTSC_M", AnalogVideo_NTSC_M},     {L"NTSC_M_J", AnalogVideo_NTSC_M_J},
    {L"NTSC_433", AnalogVideo_NTSC_433}, {L"PAL_B", AnalogVideo_PAL_B},
    {L"PAL_D", AnalogVideo_PAL_D},       {L"PAL_G", AnalogVideo_PAL_G},
    {L"PAL_H", AnalogVideo_PAL_H},       {L"PAL_I", AnalogVideo_PAL_I},
    {L"PAL_M", AnalogVideo_PAL_M},       {L"PAL_N", AnalogVideo_PAL_N},
    {L"PAL_60", AnalogVideo_PAL_60},     {L"SECAM_B", AnalogVideo_SECAM_B},
    {L"SECAM_D", AnalogVideo_SECAM_D},   {L"SECAM_G", AnalogVideo_SECAM_G},
    {L"SECAM_H", AnalogVideo_SECAM_H},   {L"SECAM_K", AnalogVideo_SECAM_K},
    {L"SECAM_K1", AnalogVideo_SECAM_K1}, {L"SECAM_L", AnalogVideo_SECAM_L},
    {L"SECAM_L1", AnalogVideo_SECAM_L1}, {L"PAL_N_COMBO", AnalogVideo_PAL_N_COMBO},
};

const long kDefaultMinChannel = 2;
const long kDefaultMaxChannel = 69;
// Picture and sound carriers of a channel, as the tuner reports them (a simple raster).
const long kFirstCarrierHz = 55250000;
const long kChannelSpacingHz = 6000000;
const long kSoundOffsetHz = 4500000;

std::vector<std::wstring> listOf(DeviceState &device, const wchar_t *key, const wchar_t *fallback)
{
    return DeviceConfig::split(device.text(key, fallback), L',');
}

long formatMask(DeviceState &device, long &first)
{
    long mask = 0;
    first = AnalogVideo_None;
    for (const std::wstring &name : listOf(device, L"tv-formats", L"NTSC_M")) {
        for (const FormatName &format : kFormats) {
            if (DeviceConfig::trim(name) != format.name)
                continue;
            mask |= format.standard;
            if (first == AnalogVideo_None)
                first = format.standard;
        }
    }
    return mask;
}

const wchar_t *inputName(TunerInputType type)
{
    return type == TunerInputAntenna ? L"antenna" : L"cable";
}

const wchar_t *modeName(AMTunerModeType mode)
{
    return mode == AMTUNER_MODE_FM_RADIO ? L"FM" : L"TV";
}

ChannelMap channelMap(DeviceState &device)
{
    ChannelMap map;
    std::wstring error;
    if (!map.parseChannels(device.text(L"channels"), error) || !map.parseStations(device.text(L"fm-stations"), error))
        device.record(L"Channel map unreadable: " + error);
    return map;
}

} // namespace

TvTunerControl::TvTunerControl(IUnknown &owner) : m_owner(owner) {}

void TvTunerControl::attach(const std::shared_ptr<DeviceState> &device)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_device = device;
    long maximum = 0;
    range(*device, m_channel, maximum);
    m_mode = AMTUNER_MODE_TV;
    m_frequencyHz = kFmLowestHz;
    m_country = static_cast<long>(device->integer(L"country-code", 1));
    long inputs = static_cast<long>(device->integer(L"tuner-inputs", 1));
    const std::wstring inputType = DeviceConfig::lower(DeviceConfig::trim(device->text(L"input-type", L"cable")));
    const TunerInputType type = inputType == L"antenna" ? TunerInputAntenna : TunerInputCable;
    m_inputTypes.assign(inputs > 0 ? inputs : 1, type);
    m_connectedInput = 0;
}

long TvTunerControl::currentStrength()
{
    std::shared_ptr<DeviceState> state = device();
    if (!state)
        return AMTUNER_NOSIGNAL;
    std::lock_guard<std::mutex> guard(m_lock);
    return strengthLocked(*state);
}

std::shared_ptr<DeviceState> TvTunerControl::device()
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_device;
}

HRESULT TvTunerControl::fault(DeviceState &device, const wchar_t *method, const std::wstring &entry)
{
    HRESULT hr = device.hresult(std::wstring(L"fault.") + method);
    return FAILED(hr) ? refuse(device, entry, hr) : hr;
}

HRESULT TvTunerControl::refuse(DeviceState &device, const std::wstring &entry, HRESULT hr)
{
    device.record(entry + L" failed", hr);
    return hr;
}

template <class Describe, class Apply>
HRESULT TvTunerControl::change(const wchar_t *method, Describe describe, Apply apply)
{
    std::shared_ptr<DeviceState> state = device();
    if (!state)
        return E_UNEXPECTED;
    std::lock_guard<std::mutex> guard(m_lock);
    std::wstring entry = describe();
    HRESULT hr = fault(*state, method, entry);
    if (FAILED(hr))
        return hr;
    hr = apply(*state, entry);
    if (FAILED(hr))
        return refuse(*state, entry, hr);
    state->record(entry);
    return hr;
}

bool TvTunerControl::validInput(long index) const
{
    return index >= 0 && index < static_cast<long>(m_inputTypes.size());
}

long TvTunerControl::availableModes(DeviceState &device)
{
    long modes = 0;
    for (const std::wstring &name : listOf(device, L"tuner-modes", L"tv")) {
        std::wstring mode = DeviceConfig::lower(DeviceConfig::trim(name));
        if (mode == L"tv")
            modes |= AMTUNER_MODE_TV;
        else if (mode == L"fm")
            modes |= AMTUNER_MODE_FM_RADIO;
    }
    return modes;
}

void TvTunerControl::range(DeviceState &device, long &minimum, long &maximum)
{
    minimum = kDefaultMinChannel;
    maximum = kDefaultMaxChannel;
    std::vector<std::wstring> ends = DeviceConfig::split(device.text(L"channel-range"), L'-');
    long long low = 0;
    long long high = 0;
    if (ends.size() == 2 && DeviceConfig::parseInteger(DeviceConfig::trim(ends[0]), low) &&
        DeviceConfig::parseInteger(DeviceConfig::trim(ends[1]), high) && low <= high) {
        minimum = static_cast<long>(low);
        maximum = static_cast<long>(high);
    }
}

long TvTunerControl::strengthLocked(DeviceState &device)
{
    ChannelMap map = channelMap(device);
    if (m_mode == AMTUNER_MODE_FM_RADIO)
        return map.stationStrength(m_frequencyHz);
    return map.channelStrength(m_channel, m_inputTypes[m_connectedInput]);
}

STDMETHODIMP TvTunerControl::QueryInterface(REFIID iid, void **out)
{
    return m_owner.QueryInterface(iid, out);
}
STDMETHODIMP_(ULONG) TvTunerControl::AddRef()
{
    return m_owner.AddRef();
}
STDMETHODIMP_(ULONG) TvTunerControl::Release()
{
    return m_owner.Release();
}

STDMETHODIMP TvTunerControl::put_Channel(LONG channel, LONG videoSubChannel, LONG audioSubChannel)
{
    return change(
        L"put_Channel",
        [&] {
            return L"Channel " + std::to_wstring(channel) + L" " + inputName(m_inputTypes[m_connectedInput]) + L" " +
                   modeName(m_mode);
        },
        [&](DeviceState &state, std::wstring &) {
            HRESULT hr = tune(state, channel);
            if (SUCCEEDED(hr)) {
                m_videoSubChannel = videoSubChannel;
                m_audioSubChannel = audioSubChannel;
            }
            return hr;
        });
}

// Takes the channel (TV) or frequency (FM) when it lies in the band.
HRESULT TvTunerControl::tune(DeviceState &device, long channel)
{
    long minimum = kFmLowestHz;
    long maximum = kFmHighestHz;
    if (m_mode != AMTUNER_MODE_FM_RADIO)
        range(device, minimum, maximum);
    if (channel < minimum || channel > maximum)
        return E_INVALIDARG;
    (m_mode == AMTUNER_MODE_FM_RADIO ? m_frequencyHz : m_channel) = channel;
    return S_OK;
}

STDMETHODIMP TvTunerControl::get_Channel(LONG *channel, LONG *videoSubChannel, LONG *audioSubChannel)
{
    if (!channel || !videoSubChannel || !audioSubChannel)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    *channel = m_mode == AMTUNER_MODE_FM_RADIO ? m_frequencyHz : m_channel;
    *videoSubChannel = m_videoSubChannel;
    *audioSubChannel = m_audioSubChannel;
    return S_OK;
}

STDMETHODIMP TvTunerControl::ChannelMinMax(LONG *minimum, LONG *maximum)
{
    if (!minimum || !maximum)
        return E_POINTER;
    std::shared_ptr<DeviceState> state = device();
    if (!state)
        return E_UNEXPECTED;
    std::lock_guard<std::mutex> guard(m_lock);
    if (m_mode == AMTUNER_MODE_FM_RADIO) {
        *minimum = kFmLowestHz;
        *maximum = kFmHighestHz;
        return S_OK;
    }
    long low = 0;
    long high = 0;
    range(*state, low, high);
    *minimum = low;
    *maximum = high;
    return S_OK;
}

STDMETHODIMP TvTunerControl::put_CountryCode(LONG country)
{
    return change(
        L"put_CountryCode", [&] { return L"CountryCode " + std::to_wstring(country); },
        [&](DeviceState &, std::wstring &) {
            if (country < 1 || country > 999)
                return E_INVALIDARG;
            m_country = country;
            return S_OK;
        });
}

STDMETHODIMP TvTunerControl::get_CountryCode(LONG *country)
{
    return readLocked(m_lock, country, m_country);
}

STDMETHODIMP TvTunerControl::put_TuningSpace(LONG tuningSpace)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_tuningSpace = tuningSpace;
    return S_OK;
}

STDMETHODIMP TvTunerControl::get_TuningSpace(LONG *tuningSpace)
{
    return readLocked(m_lock, tuningSpace, m_tuningSpace);
}

STDMETHODIMP TvTunerControl::Logon(HANDLE)
{
    return S_OK;
}

STDMETHODIMP TvTunerControl::Logout()
{
    return S_OK;
}

STDMETHODIMP TvTunerControl::SignalPresent(LONG *strength)
{
    if (!strength)
        return E_POINTER;
    std::shared_ptr<DeviceState> state = device();
    if (!state)
        return E_UNEXPECTED;
    HRESULT hr = fault(*state, L"SignalPresent", L"SignalPresent");
    if (FAILED(hr))
        return hr;
    std::lock_guard<std::mutex> guard(m_lock);
    *strength = strengthLocked(*state);
    state->record(L"SignalPresent " + std::to_wstring(*strength));
    return S_OK;
}

STDMETHODIMP TvTunerControl::put_Mode(AMTunerModeType mode)
{
    return change(
        L"put_Mode", [&] { return std::wstring(L"Mode ") + modeName(mode); },
        [&](DeviceState &state, std::wstring &) {
            if (mode == AMTUNER_MODE_DEFAULT || (availableModes(state) & mode) != mode)
                return E_INVALIDARG;
            m_mode = mode;
            return S_OK;
        });
}

STDMETHODIMP TvTunerControl::get_Mode(AMTunerModeType *mode)
{
    return readLocked(m_lock, mode, m_mode);
}

STDMETHODIMP TvTunerControl::GetAvailableModes(LONG *modes)
{
    if (!modes)
        return E_POINTER;
    std::shared_ptr<DeviceState> state = device();
    if (!state)
        return E_UNEXPECTED;
    *modes = availableModes(*state);
    return S_OK;
}

STDMETHODIMP TvTunerControl::RegisterNotificationCallBack(IAMTunerNotification *, LONG)
{
    return E_NOTIMPL;
}

STDMETHODIMP TvTunerControl::UnRegisterNotificationCallBack(IAMTunerNotification *)
{
    return E_NOTIMPL;
}

STDMETHODIMP TvTunerControl::get_AvailableTVFormats(LONG *standards)
{
    if (!standards)
        return E_POINTER;
    std::shared_ptr<DeviceState> state = device();
    if (!state)
        return E_UNEXPECTED;
    const HRESULT hr = fault(*state, L"get_AvailableTVFormats", L"AvailableTVFormats");
    if (FAILED(hr))
        return hr;
    long first = 0;
    *standards = formatMask(*state, first);
    return S_OK;
}

STDMETHODIMP TvTunerControl::get_TVFormat(LONG *standard)
{
    if (!standard)
        return E_POINTER;
    std::shared_ptr<DeviceState> state = device();
    if (!state)
        return E_UNEXPECTED;
    long first = 0;
    formatMask(*state, first);
    *standard = first;
    return S_OK;
}

STDMETHODIMP TvTunerControl::AutoTune(LONG channel, LONG *found)
{
    if (!found)
        return E_POINTER;
    return change(
        L"AutoTune", [&] { return L"AutoTune " + std::to_wstring(channel); },
        [&](DeviceState &state, std::wstring &entry) {
            HRESULT hr = tune(state, channel);
            if (SUCCEEDED(hr)) {
                *found = strengthLocked(state) > 0 ? 1 : 0;
                entry += L" found " + std::to_wstring(*found);
            }
            return hr;
        });
}

STDMETHODIMP TvTunerControl::StoreAutoTune()
{
    return S_OK;
}

STDMETHODIMP TvTunerControl::get_NumInputConnections(LONG *count)
{
    if (!count)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    *count = static_cast<LONG>(m_inputTypes.size());
    return S_OK;
}

STDMETHODIMP TvTunerControl::put_InputType(LONG index, TunerInputType type)
{
    return change(
        L"put_InputType", [&] { return L"InputType " + std::to_wstring(index) + L" " + inputName(type); },
        [&](DeviceState &, std::wstring &) {
            if (!validInput(index) || (type != TunerInputCable && type != TunerInputAntenna))
                return E_INVALIDARG;
            m_inputTypes[index] = type;
            return S_OK;
        });
}

STDMETHODIMP TvTunerControl::get_InputType(LONG index, TunerInputType *type)
{
    if (!type)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    if (!validInput(index))
        return E_INVALIDARG;
    *type = m_inputTypes[index];
    return S_OK;
}

STDMETHODIMP TvTunerControl::put_ConnectInput(LONG index)
{
    return change(
        L"put_ConnectInput", [&] { return L"ConnectInput " + std::to_wstring(index); },
        [&](DeviceState &, std::wstring &) {
            if (!validInput(index))
                return E_INVALIDARG;
            m_connectedInput = index;
            return S_OK;
        });
}

STDMETHODIMP TvTunerControl::get_ConnectInput(LONG *index)
{
    if (!index)
        return E_POINTER;
    std::shared_ptr<DeviceState> state = device();
    if (!state)
        return E_UNEXPECTED;
    HRESULT hr = fault(*state, L"get_ConnectInput", L"get_ConnectInput");
    if (FAILED(hr))
        return hr;
    std::lock_guard<std::mutex> guard(m_lock);
    *index = m_connectedInput;
    return S_OK;
}

STDMETHODIMP TvTunerControl::get_VideoFrequency(LONG *frequency)
{
    if (!frequency)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    if (m_mode == AMTUNER_MODE_FM_RADIO)
        return E_FAIL;
    *frequency = kFirstCarrierHz + (m_channel - kDefaultMinChannel) * kChannelSpacingHz;
    return S_OK;
}

STDMETHODIMP TvTunerControl::get_AudioFrequency(LONG *frequency)
{
    if (!frequency)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    *frequency = m_mode == AMTUNER_MODE_FM_RADIO
                     ? m_frequencyHz
                     : kFirstCarrierHz + (m_channel - kDefaultMinChannel) * kChannelSpacingHz + kSoundOffsetHz;
    return S_OK;
}

} // namespace lab
