// ITuner of a network provider: the tuning space and tune request in effect, the tuning spaces
// the provider supports (those of the system whose network type it tunes), validation, and the
// delivery of each tune request to the tuner filter on the antenna pin (TuneDelivery).
//
// A request of a network type the provider does not tune is refused with E_INVALIDARG, as is a
// request without a tuning space. A request put while the antenna pin is unconnected is kept and
// delivered when the provider pauses from Stopped; a request the device refuses is kept too
// (get_TuneRequest answers it) and put_TuneRequest returns the device's HRESULT. Before any
// request or space was put, get_TuneRequest and get_TuningSpace fail with E_FAIL. get_TuneRequest
// hands out a copy of the request in effect.
//
// Device "Network Provider" (all three provider classes):
//   fault.put_TuneRequest = HRESULT     put_TuneRequest fails with it before taking the request
//   fault.EnumTuningSpaces = HRESULT    EnumTuningSpaces fails with it
//   Journal: "TuneRequest <tuning>" (see TuneParameters::describe), "Deliver <tuning>" (a kept
//            request delivered at Pause), "TuningSpace <name>", "EnumTuningSpaces <count>"; a
//            refused call ends in " failed 0x<hr>".
#pragma once

#include <windows.h>
#include <tuner.h>

#include <memory>
#include <mutex>
#include <string>

#include <atlbase.h>

#include "bda/ProviderKind.h"

namespace lab {

class AntennaPin;
class DeviceState;
class TuneParameters;

class TunerControl : public ITuner {
public:
    TunerControl(IUnknown &owner, AntennaPin &antenna, ProviderKind kind);
    TunerControl(const TunerControl &) = delete;
    TunerControl &operator=(const TunerControl &) = delete;

    // The provider leaves Stopped: a request kept while unconnected goes to the device now.
    void deliverPending();

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP get_TuningSpace(ITuningSpace **space) override;
    STDMETHODIMP put_TuningSpace(ITuningSpace *space) override;
    STDMETHODIMP EnumTuningSpaces(IEnumTuningSpaces **spaces) override;
    STDMETHODIMP get_TuneRequest(ITuneRequest **request) override;
    STDMETHODIMP put_TuneRequest(ITuneRequest *request) override;
    STDMETHODIMP Validate(ITuneRequest *request) override;
    STDMETHODIMP get_PreferredComponentTypes(IComponentTypes **types) override;
    STDMETHODIMP put_PreferredComponentTypes(IComponentTypes *types) override;
    STDMETHODIMP get_SignalStrength(LONG *strength) override;
    STDMETHODIMP TriggerSignalEvents(LONG interval) override;

private:
    // S_OK when the request can be tuned here; fills the tuning read from it.
    HRESULT check(ITuneRequest *request, TuneParameters &tuning);
    bool acceptsSpace(ITuningSpace *space);

    IUnknown &m_owner;
    AntennaPin &m_antenna;
    const ProviderKind m_kind;
    const std::shared_ptr<DeviceState> m_device;
    std::mutex m_lock;
    CComPtr<ITuningSpace> m_space;
    CComPtr<ITuneRequest> m_request;
    bool m_pending = false;
};

} // namespace lab
