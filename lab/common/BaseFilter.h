// The filter half of every lab filter: IBaseFilter with IMediaFilter and IPersist, state,
// clock, graph membership and pin enumeration. Pins are owned by the filter and share its
// reference count, so a pin handed out keeps its filter alive.
//
// A subclass supplies its pins (pinCount/pin), its class ID, optionally more interfaces
// (queryExtra) and reacts to state changes (onPause/onRun/onStop).
#pragma once

#include <windows.h>
#include <dshow.h>
#include <atomic>
#include <mutex>
#include <string>

#include <atlbase.h>

#include "common/LabModule.h"

namespace lab {

class BasePin;

class BaseFilter : public IBaseFilter, private LiveObject {
public:
    explicit BaseFilter(const CLSID &clsid);
    virtual ~BaseFilter();
    BaseFilter(const BaseFilter &) = delete;
    BaseFilter &operator=(const BaseFilter &) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IPersist
    STDMETHODIMP GetClassID(CLSID *clsid) override;

    // IMediaFilter
    STDMETHODIMP Stop() override;
    STDMETHODIMP Pause() override;
    STDMETHODIMP Run(REFERENCE_TIME start) override;
    STDMETHODIMP GetState(DWORD timeout, FILTER_STATE *state) override;
    STDMETHODIMP SetSyncSource(IReferenceClock *clock) override;
    STDMETHODIMP GetSyncSource(IReferenceClock **clock) override;

    // IBaseFilter
    STDMETHODIMP EnumPins(IEnumPins **pins) override;
    STDMETHODIMP FindPin(LPCWSTR id, IPin **pin) override;
    STDMETHODIMP QueryFilterInfo(FILTER_INFO *info) override;
    STDMETHODIMP JoinFilterGraph(IFilterGraph *graph, LPCWSTR name) override;
    STDMETHODIMP QueryVendorInfo(LPWSTR *info) override;

    virtual int pinCount() = 0;
    virtual BasePin *pin(int index) = 0;

    FILTER_STATE state();
    // The stream time now (reference clock minus the run's start), or false without a clock.
    bool streamTime(REFERENCE_TIME &now);
    // Sends an event to the graph (EC_COMPLETE, EC_ERRORABORT ...) when the graph takes events.
    void notifyEvent(long code, LONG_PTR param1, LONG_PTR param2);

    // Held across state changes and connections. Streaming threads never take it.
    std::recursive_mutex &lock() { return m_lock; }

protected:
    // More interfaces on the filter; return the interface pointer without a reference, or null.
    virtual void *queryExtra(REFIID iid);
    // Leaving Stopped (pins are active by then); a failure refuses the Pause.
    virtual HRESULT onPause(bool fromStopped);
    virtual HRESULT onRun(REFERENCE_TIME start);
    // Entered stopped (pins inactive); called without the filter lock, so it may join threads.
    virtual void onStop();
    // A live source answers VFW_S_CANT_CUE while paused.
    virtual bool isLiveSource() const { return false; }

private:
    HRESULT activatePins();
    void deactivatePins();

    volatile LONG m_refs = 0;
    const CLSID m_clsid;
    std::recursive_mutex m_lock;
    std::atomic<FILTER_STATE> m_state{State_Stopped};
    // Guards what streaming threads read: clock, start time, graph.
    std::mutex m_infoLock;
    REFERENCE_TIME m_start = 0;
    CComPtr<IReferenceClock> m_clock;
    IFilterGraph *m_graph = nullptr; // not held: the graph holds us
    std::wstring m_name;
};

} // namespace lab
