// Steering the lab from a test: per-device overrides, the journal of what was done to each
// simulated device, and counts of live lab objects and streaming threads.
//
// The functions are exported by sorvanelab.dll, the same module instance COM loads for the
// devices (both come from the bin folder), so an override set here is seen by the filter the
// library binds. Strings cross the module boundary only as wchar_t buffers.
//
// Devices are named by their friendly name ("FriendlyName" of the moniker, "name" in the
// description file). Override keys are the keys of the description file (see lab/lab.conf).
// Picture faults: "fault.garbage" (noise), "fault.frozen" (frame 0 repeated), "fault.flat"
// (webcams: one colour); a capture card whose input is not the tuner delivers black.
//
// The BDA cards' entries (tuner filters unless said otherwise; keys and faults in lab/lab.conf):
//   "Tune <kHz> kHz <modulation>[ <n> MHz]"   IBDA_DeviceControl::CommitChanges, e.g.
//                                   "Tune 55250 kHz 256QAM 6 MHz" (modulation 8VSB, 256QAM, 64QAM,
//                                   NOT_SET ...; a refused one ends in " failed 0x<HRESULT>")
//   "SignalStrength <n>", "SignalQuality <n>", "SignalLocked <0|1>", "SignalPresent <0|1>",
//   "SampleTime <ms>"               IBDA_SignalStatistics reads (" failed 0x<HRESULT>" when refused)
//   "Broadcast unreadable: <why>"   the broadcast description could not be read at a tune
//   "Delivered <n>"                 transport-stream samples of a run (receivers, tuner-only cards)
//
// Journal entries, one string each, in order:
//   "SetFormat <format>"            IAMStreamConfig::SetFormat accepted, e.g. "SetFormat YUY2 640x480 30fps"
//   "SetFormat refused <format>"    refused by a fault
//   "Pause", "Run", "Stop"          state changes of the device's filter (a refused one: "Run failed 0x800705AA")
//   "Delivered <n>"                 samples delivered since the filter left Stopped, written at Stop
//   "Privacy <value> <flags>"       IAMCameraControl::Set of the privacy property
//   "Bind failed 0x..."             IPersistPropertyBag::Load refused by a fault
// The tuner and recording pieces add their own entries (channels, country codes, routes ...).
//
// The BDA system components journal under two names that are not devices of the description
// file: "Network Provider" (the generic, ATSC and DVB-T network providers alike) and
// "System Tuning Spaces" (the tuning spaces container and its spaces). <tuning> below is
//   "<network> <space> <kHz> kHz <modulation> <MHz> MHz channel <c> minor <m> program <p>"
// with network ATSC, DVB-T or DigitalCable, modulation 8VSB, 256QAM, 64QAM ... or NOT_SET, and -1
// for a value the request leaves unset; e.g.
//   "TuneRequest ATSC ATSCCable 55250 kHz 256QAM 6 MHz channel 2 minor -1 program 1".
// "Network Provider":
//   "TuneRequest <tuning>"          ITuner::put_TuneRequest (delivered to the tuner filter when
//                                   the antenna pin is connected)
//   "Deliver <tuning>"              a request put while unconnected, delivered at Pause
//   "TuningSpace <name>"            ITuner::put_TuningSpace
//   "EnumTuningSpaces <count>"      ITuner::EnumTuningSpaces and how many spaces it listed
//   "CountryCode <code>"            IFrequencyMap::put_CountryCode
//   "CountryCodeList <count>", "DefaultFrequencyMapping <code> <count>", "FrequencyMapping <count>"
//   "Join failed 0x<HRESULT>"       a graph refused by the provider's fault.join
// "System Tuning Spaces":
//   "Item <name|id> found", "Item <name|id> not found"    ITuningSpaceContainer::get_Item
//   "FindID <name> <id>", "FindID <name> not found", "EnumTuningSpaces <count>"
//   "CreateTuneRequest <space>", "SystemType <space> Terrestrial|Cable|Satellite|ISDB-T|ISDB-S"
//   "NetworkType failed 0x<HRESULT>" ITuningSpace::get_NetworkType refused by its fault
// A refused call adds " failed 0x<HRESULT>" to its entry.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#ifdef SORVANELAB_BUILD
#define LAB_API extern "C" __declspec(dllexport)
#else
#define LAB_API extern "C" __declspec(dllimport)
#endif

// Sets (value non-null) or removes (value null) an override of one key of one device.
LAB_API HRESULT WINAPI LabSetOverride(const wchar_t *device, const wchar_t *key, const wchar_t *value);
// Length of the override's text (without terminator), or -1 when the key has no override.
// The text is copied when capacity exceeds that length.
LAB_API int WINAPI LabGetOverride(const wchar_t *device, const wchar_t *key, wchar_t *buffer, int capacity);

LAB_API int WINAPI LabJournalSize(const wchar_t *device);
// Length of entry index (without terminator) or -1 past the end; copied when capacity allows.
LAB_API int WINAPI LabJournalEntry(const wchar_t *device, int index, wchar_t *buffer, int capacity);
// Empties the journal and the delivered-sample count of one device.
LAB_API void WINAPI LabClearJournal(const wchar_t *device);
// Samples delivered by the device since its journal was last cleared.
LAB_API long long WINAPI LabSamplesDelivered(const wchar_t *device);

// Sample periods begun by all transport streams of the process, and how many streams run.
LAB_API long long WINAPI LabTransportPeriods();
LAB_API long WINAPI LabTransportStreams();

// Lab COM objects alive in the process (filters with their pins, enumerators, samples ...).
LAB_API long WINAPI LabLiveObjects();
// Lab streaming threads still running.
LAB_API long WINAPI LabLiveThreads();

namespace lab {

namespace detail {
template <class Read>
inline bool readText(Read read, std::wstring &text)
{
    const int length = read(nullptr, 0);
    if (length < 0)
        return false;
    std::vector<wchar_t> buffer(static_cast<size_t>(length) + 1, L'\0');
    read(buffer.data(), length + 1);
    text.assign(buffer.data(), static_cast<size_t>(length));
    return true;
}
} // namespace detail

// Overrides keys of one device for the life of the scope, then restores what was there before.
class DeviceOverride {
public:
    explicit DeviceOverride(std::wstring device) : m_device(std::move(device)) {}
    DeviceOverride(const std::wstring &device, const std::wstring &key, const std::wstring &value) : m_device(device)
    {
        set(key, value);
    }
    DeviceOverride(const DeviceOverride &) = delete;
    DeviceOverride &operator=(const DeviceOverride &) = delete;
    ~DeviceOverride()
    {
        for (auto it = m_saved.rbegin(); it != m_saved.rend(); ++it)
            LabSetOverride(m_device.c_str(), it->key.c_str(), it->had ? it->value.c_str() : nullptr);
    }

    DeviceOverride &set(const std::wstring &key, const std::wstring &value)
    {
        Saved saved{key, false, std::wstring()};
        saved.had = detail::readText(
            [&](wchar_t *buffer, int capacity) {
                return LabGetOverride(m_device.c_str(), key.c_str(), buffer, capacity);
            },
            saved.value);
        m_saved.push_back(saved);
        LabSetOverride(m_device.c_str(), key.c_str(), value.c_str());
        return *this;
    }

private:
    struct Saved {
        std::wstring key;
        bool had;
        std::wstring value;
    };
    std::wstring m_device;
    std::vector<Saved> m_saved;
};

inline std::vector<std::wstring> journal(const std::wstring &device)
{
    std::vector<std::wstring> entries;
    const int size = LabJournalSize(device.c_str());
    for (int i = 0; i < size; ++i) {
        std::wstring entry;
        if (detail::readText(
                [&](wchar_t *buffer, int capacity) { return LabJournalEntry(device.c_str(), i, buffer, capacity); },
                entry))
            entries.push_back(entry);
    }
    return entries;
}

// Whether the device's journal holds exactly that entry.
inline bool journalHas(const std::wstring &device, const std::wstring &entry)
{
    const std::vector<std::wstring> entries = journal(device);
    return std::find(entries.begin(), entries.end(), entry) != entries.end();
}

inline void clearJournal(const std::wstring &device)
{
    LabClearJournal(device.c_str());
}
inline long long samplesDelivered(const std::wstring &device)
{
    return LabSamplesDelivered(device.c_str());
}
inline long liveObjects()
{
    return LabLiveObjects();
}
inline long liveThreads()
{
    return LabLiveThreads();
}

} // namespace lab
