// The tuning state of one simulated BDA tuner: what the control nodes were given since the last
// commit (frequency, multiplier, bandwidth, modulation), what the last CommitChanges tuned, and
// the signal statistics that follow from it.
//
// CommitChanges looks the frequency up in the broadcast description among the device's network
// types and journals "Tune <kHz> kHz <modulation>[ <n> MHz]" (" failed 0x<hr>" when refused by
// fault.tune or by the multiplex's refuse fault; the tune before it then stays).
// Statistics come from the tuned multiplex (nothing tuned or nothing there: strength 0,
// quality 0, not locked, not present; a modulation that does not lock: present, not locked,
// quality 0); the keys signal.strength, signal.quality, signal.locked, signal.present and
// signal.sampletime override them; fault.get_SignalStrength ... fault.get_SampleTime fail the
// getter. Every read is journaled: "SignalStrength <n>", "SignalQuality <n>",
// "SignalLocked <0|1>", "SignalPresent <0|1>", "SampleTime <ms>" (or "... failed 0x<hr>").
#pragma once

#include <windows.h>
#include <bdatypes.h>

#include <memory>
#include <mutex>
#include <string>

#include "bdadevice/TunedSignal.h"

namespace lab {

class DeviceState;

class BdaTuning {
public:
    enum class Statistic { Strength, Quality, Locked, Present, SampleTime };

    BdaTuning();

    void startChanges();
    bool changesPending() const;
    // Applies what the nodes were given; the device's journal, faults and broadcast.
    HRESULT commitChanges(DeviceState &device);

    void setFrequency(ULONG frequency);
    void setMultiplier(ULONG multiplier);
    void setBandwidth(ULONG bandwidth);
    void setModulation(ModulationType modulation);
    ULONG frequency() const;
    ULONG multiplier() const;
    ULONG bandwidth() const;
    ModulationType modulation() const;

    TunedSignal tuned() const;
    HRESULT statistic(DeviceState &device, Statistic which, LONG &value) const;

    static std::wstring modulationName(ModulationType modulation);

private:
    struct Settings {
        ULONG frequency = 0;
        ULONG multiplier = 1000; // BDA's default: frequencies in kHz
        ULONG bandwidth = static_cast<ULONG>(-1);
        ModulationType modulation = BDA_MOD_NOT_SET;
    };

    long frequencyKhz(const Settings &settings) const;
    LONG describedValue(Statistic which) const;

    mutable std::mutex m_lock;
    Settings m_pending;
    bool m_changed = false;
    TunedSignal m_tuned;
};

} // namespace lab
