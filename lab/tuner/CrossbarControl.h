// IAMCrossbar of a simulated capture card: configurable input and output connectors and the
// routes between them. A video input routes to video outputs only, an audio input to audio
// outputs. At start each output takes the first input of its kind.
//
// Lives inside the capture filter; its IUnknown is the filter's.
//
// Keys of the device read here:
//   crossbar-inputs   "composite, tuner, svideo, tuner-audio, line-audio"
//   crossbar-outputs  "video-decoder, audio-decoder"
//   fault.canroute    "1, 2"      input indexes CanRoute answers S_FALSE for and Route refuses
//   fault.route       an HRESULT  Route fails with it although CanRoute agreed
// Journal: "Route <output> <input>", a refused one with " failed 0x<hr>".
#pragma once

#include <windows.h>
#include <dshow.h>
#include <memory>
#include <mutex>
#include <vector>

namespace lab {

class DeviceState;

class CrossbarControl : public IAMCrossbar {
public:
    explicit CrossbarControl(IUnknown &owner);
    CrossbarControl(const CrossbarControl &) = delete;
    CrossbarControl &operator=(const CrossbarControl &) = delete;

    // Reads the connectors of the device and routes each output to its first input of its kind.
    void attach(const std::shared_ptr<DeviceState> &device);
    // The connector routed to the first video output, or PhysConn_Video_Black when none is.
    long videoSource();

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP get_PinCounts(LONG *outputs, LONG *inputs) override;
    STDMETHODIMP CanRoute(LONG output, LONG input) override;
    STDMETHODIMP Route(LONG output, LONG input) override;
    STDMETHODIMP get_IsRoutedTo(LONG output, LONG *input) override;
    STDMETHODIMP get_CrossbarPinInfo(BOOL isInput, LONG index, LONG *related, LONG *type) override;

private:
    // S_OK, S_FALSE for a pair that cannot be routed, E_INVALIDARG for a pin that does not exist.
    HRESULT routable(LONG output, LONG input);
    static long relatedPin(const std::vector<long> &pins, long index);

    IUnknown &m_owner;
    std::mutex m_lock;
    std::shared_ptr<DeviceState> m_device;
    std::vector<long> m_inputs;
    std::vector<long> m_outputs;
    std::vector<long> m_routes; // input routed to each output, -1 for none
};

} // namespace lab
