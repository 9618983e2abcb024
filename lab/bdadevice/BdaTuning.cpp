#include "bdadevice/BdaTuning.h"

#include "bdadevice/BroadcastSource.h"
#include "common/DeviceState.h"

namespace lab {

namespace {

const wchar_t *statisticName(BdaTuning::Statistic which)
{
    switch (which) {
    case BdaTuning::Statistic::Strength:
        return L"SignalStrength";
    case BdaTuning::Statistic::Quality:
        return L"SignalQuality";
    case BdaTuning::Statistic::Locked:
        return L"SignalLocked";
    case BdaTuning::Statistic::Present:
        return L"SignalPresent";
    case BdaTuning::Statistic::SampleTime:
        return L"SampleTime";
    }
    return L"";
}

const wchar_t *overrideKey(BdaTuning::Statistic which)
{
    switch (which) {
    case BdaTuning::Statistic::Strength:
        return L"signal.strength";
    case BdaTuning::Statistic::Quality:
        return L"signal.quality";
    case BdaTuning::Statistic::Locked:
        return L"signal.locked";
    case BdaTuning::Statistic::Present:
        return L"signal.present";
    case BdaTuning::Statistic::SampleTime:
        return L"signal.sampletime";
    }
    return L"";
}

std::string narrowName(const std::wstring &name)
{
    return std::string(name.begin(), name.end());
}

std::vector<std::string> networkTypes(const DeviceState &device)
{
    std::vector<std::string> networks;
    for (const std::wstring &network : DeviceConfig::split(device.text(L"networks", L"atsc, cable, dvb-t, dtmb"), L','))
        networks.push_back(narrowName(DeviceConfig::lower(DeviceConfig::trim(network))));
    return networks;
}

const LONG kSampleTimeMs = 100;

} // namespace

BdaTuning::BdaTuning() = default;

void BdaTuning::startChanges()
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_changed = false;
}

bool BdaTuning::changesPending() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_changed;
}

void BdaTuning::setFrequency(ULONG frequency)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_pending.frequency = frequency;
    m_changed = true;
}

void BdaTuning::setMultiplier(ULONG multiplier)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_pending.multiplier = multiplier;
    m_changed = true;
}

void BdaTuning::setBandwidth(ULONG bandwidth)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_pending.bandwidth = bandwidth;
    m_changed = true;
}

void BdaTuning::setModulation(ModulationType modulation)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_pending.modulation = modulation;
    m_changed = true;
}

ULONG BdaTuning::frequency() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_pending.frequency;
}

ULONG BdaTuning::multiplier() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_pending.multiplier;
}

ULONG BdaTuning::bandwidth() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_pending.bandwidth;
}

ModulationType BdaTuning::modulation() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_pending.modulation;
}

long BdaTuning::frequencyKhz(const Settings &settings) const
{
    const unsigned long long hertzish = static_cast<unsigned long long>(settings.frequency) * settings.multiplier;
    return static_cast<long>(hertzish / 1000);
}

std::wstring BdaTuning::modulationName(ModulationType modulation)
{
    switch (modulation) {
    case BDA_MOD_NOT_SET:
        return L"NOT_SET";
    case BDA_MOD_NOT_DEFINED:
        return L"NOT_DEFINED";
    case BDA_MOD_16QAM:
        return L"16QAM";
    case BDA_MOD_64QAM:
        return L"64QAM";
    case BDA_MOD_256QAM:
        return L"256QAM";
    case BDA_MOD_QPSK:
        return L"QPSK";
    case BDA_MOD_8VSB:
        return L"8VSB";
    case BDA_MOD_16VSB:
        return L"16VSB";
    case BDA_MOD_8PSK:
        return L"8PSK";
    default:
        return L"MOD" + std::to_wstring(static_cast<int>(modulation));
    }
}

HRESULT BdaTuning::commitChanges(DeviceState &device)
{
    Settings settings;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        settings = m_pending;
    }
    const long kHz = frequencyKhz(settings);
    std::wstring entry = L"Tune " + std::to_wstring(kHz) + L" kHz " + modulationName(settings.modulation);
    if (settings.bandwidth != static_cast<ULONG>(-1) && settings.bandwidth != 0)
        entry += L" " + std::to_wstring(settings.bandwidth) + L" MHz";

    std::wstring problem;
    const std::shared_ptr<const BroadcastDescription> broadcast = BroadcastSource::forDevice(device, problem);
    if (!problem.empty())
        device.record(L"Broadcast unreadable: " + problem);
    const Multiplex *found = broadcast->find(networkTypes(device), kHz);

    HRESULT refused = device.hresult(L"fault.tune");
    if (SUCCEEDED(refused) && found && found->refuseTune != 0)
        refused = static_cast<HRESULT>(found->refuseTune);
    if (FAILED(refused)) {
        device.record(entry + L" failed", refused);
        return refused;
    }
    device.record(entry);

    std::lock_guard<std::mutex> guard(m_lock);
    m_changed = false;
    m_tuned.multiplex = found ? std::shared_ptr<const Multiplex>(broadcast, found) : nullptr;
    const std::string tunedModulation =
        settings.modulation == BDA_MOD_NOT_SET || settings.modulation == BDA_MOD_NOT_DEFINED
            ? std::string()
            : narrowName(modulationName(settings.modulation));
    m_tuned.locked = found && found->locksWith(tunedModulation);
    m_tuned.frequencyKhz = kHz;
    ++m_tuned.generation;
    return S_OK;
}

TunedSignal BdaTuning::tuned() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_tuned;
}

LONG BdaTuning::describedValue(Statistic which) const
{
    const TunedSignal signal = tuned();
    if (which == Statistic::SampleTime)
        return kSampleTimeMs;
    if (!signal.multiplex)
        return 0;
    const SignalValues &values = signal.multiplex->signal;
    switch (which) {
    case Statistic::Strength:
        return values.strength;
    case Statistic::Quality:
        return signal.locked ? values.quality : 0;
    case Statistic::Locked:
        return signal.locked && values.locked ? 1 : 0;
    case Statistic::Present:
        return values.present ? 1 : 0;
    default:
        return 0;
    }
}

HRESULT BdaTuning::statistic(DeviceState &device, Statistic which, LONG &value) const
{
    const std::wstring name = statisticName(which);
    const HRESULT refused = device.hresult(L"fault.get_" + name);
    if (FAILED(refused)) {
        device.record(name + L" failed", refused);
        return refused;
    }
    std::wstring overridden;
    if (device.find(overrideKey(which), overridden)) {
        long long parsed = 0;
        value = DeviceConfig::parseInteger(overridden, parsed) ? static_cast<LONG>(parsed)
                                                               : (DeviceConfig::parseBool(overridden) ? 1 : 0);
    } else {
        value = describedValue(which);
    }
    device.record(name + L" " + std::to_wstring(value));
    return S_OK;
}

} // namespace lab
