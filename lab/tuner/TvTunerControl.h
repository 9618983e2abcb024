// IAMTVTuner of a simulated analog TV card: TV and FM modes, channels (channel numbers in TV
// mode, frequencies in hertz in FM mode), the input connections with their antenna/cable type,
// country code and TV formats. The signal comes from the device's channel map ("channels",
// "fm-stations"), read on every question so a test's override takes effect at once.
//
// Lives inside the capture filter; its IUnknown is the filter's.
//
// Keys of the device read here (description file or a test's override):
//   tuner-modes    "tv, fm"                       available modes
//   channel-range  "2-69"                         TV channels put_Channel accepts
//   tv-formats     "NTSC_M, PAL_B"                get_AvailableTVFormats; the first is the format
//   tuner-inputs   "1"                            input connections
//   input-type     "antenna" | "cable"            type of every input at start
//   country-code   "1"                            country at start
//   fault.<method> an HRESULT                     that method fails with it (fault.put_Mode,
//                                                 fault.put_Channel, fault.SignalPresent, fault.AutoTune,
//                                                 fault.put_InputType, fault.get_ConnectInput,
//                                                 fault.put_ConnectInput, fault.put_CountryCode,
//                                                 fault.get_AvailableTVFormats)
// Journal: "Mode TV|FM", "InputType <index> antenna|cable", "ConnectInput <index>",
// "Channel <n> antenna|cable TV|FM" (n in hertz for FM), "AutoTune <n> found <0|1>",
// "CountryCode <code>", "SignalPresent <strength>"; a refused call adds " failed 0x<hr>"
// ("AvailableTVFormats failed 0x<hr>" for the formats).
#pragma once

#include <windows.h>
#include <dshow.h>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace lab {

class DeviceState;

class TvTunerControl : public IAMTVTuner {
public:
    static const long kFmLowestHz = 87500000;
    static const long kFmHighestHz = 108000000;

    explicit TvTunerControl(IUnknown &owner);
    TvTunerControl(const TvTunerControl &) = delete;
    TvTunerControl &operator=(const TvTunerControl &) = delete;

    // The device whose configuration and journal this tuner uses; resets the tuning to its start.
    void attach(const std::shared_ptr<DeviceState> &device);
    // The strength of what is tuned now, for the picture (0 when nothing is received).
    long currentStrength();

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IAMTuner
    STDMETHODIMP put_Channel(LONG channel, LONG videoSubChannel, LONG audioSubChannel) override;
    STDMETHODIMP get_Channel(LONG *channel, LONG *videoSubChannel, LONG *audioSubChannel) override;
    STDMETHODIMP ChannelMinMax(LONG *minimum, LONG *maximum) override;
    STDMETHODIMP put_CountryCode(LONG country) override;
    STDMETHODIMP get_CountryCode(LONG *country) override;
    STDMETHODIMP put_TuningSpace(LONG tuningSpace) override;
    STDMETHODIMP get_TuningSpace(LONG *tuningSpace) override;
    STDMETHODIMP Logon(HANDLE user) override;
    STDMETHODIMP Logout() override;
    STDMETHODIMP SignalPresent(LONG *strength) override;
    STDMETHODIMP put_Mode(AMTunerModeType mode) override;
    STDMETHODIMP get_Mode(AMTunerModeType *mode) override;
    STDMETHODIMP GetAvailableModes(LONG *modes) override;
    STDMETHODIMP RegisterNotificationCallBack(IAMTunerNotification *notify, LONG events) override;
    STDMETHODIMP UnRegisterNotificationCallBack(IAMTunerNotification *notify) override;

    // IAMTVTuner
    STDMETHODIMP get_AvailableTVFormats(LONG *standards) override;
    STDMETHODIMP get_TVFormat(LONG *standard) override;
    STDMETHODIMP AutoTune(LONG channel, LONG *found) override;
    STDMETHODIMP StoreAutoTune() override;
    STDMETHODIMP get_NumInputConnections(LONG *count) override;
    STDMETHODIMP put_InputType(LONG index, TunerInputType type) override;
    STDMETHODIMP get_InputType(LONG index, TunerInputType *type) override;
    STDMETHODIMP put_ConnectInput(LONG index) override;
    STDMETHODIMP get_ConnectInput(LONG *index) override;
    STDMETHODIMP get_VideoFrequency(LONG *frequency) override;
    STDMETHODIMP get_AudioFrequency(LONG *frequency) override;

private:
    // The device or null; a tuner used before its device is bound answers E_UNEXPECTED.
    std::shared_ptr<DeviceState> device();
    // The failure injected for the method ("fault.put_Channel"), journaled; else S_OK.
    HRESULT fault(DeviceState &device, const wchar_t *method, const std::wstring &entry);
    HRESULT refuse(DeviceState &device, const std::wstring &entry, HRESULT hr);
    // What every setter does: describe() names the call for the journal; an injected fault or a
    // failure of apply(device, entry) refuses it ("... failed 0x<hr>"), else it is journaled.
    // apply runs under the lock and may add to the entry.
    template <class Describe, class Apply>
    HRESULT change(const wchar_t *method, Describe describe, Apply apply);
    bool validInput(long index) const;
    long availableModes(DeviceState &device);
    void range(DeviceState &device, long &minimum, long &maximum);
    long strengthLocked(DeviceState &device);
    HRESULT tune(DeviceState &device, long channel);

    IUnknown &m_owner;
    std::mutex m_lock;
    std::shared_ptr<DeviceState> m_device;
    AMTunerModeType m_mode = AMTUNER_MODE_TV;
    long m_channel = 0;
    long m_videoSubChannel = AMTUNER_SUBCHAN_DEFAULT;
    long m_audioSubChannel = AMTUNER_SUBCHAN_DEFAULT;
    long m_frequencyHz = kFmLowestHz;
    long m_country = 1;
    long m_tuningSpace = 0;
    std::vector<TunerInputType> m_inputTypes;
    long m_connectedInput = 0;
};

} // namespace lab
