// The base of a filter that is a simulated device. Bound through its moniker, it reads the
// device's settings from the property bag into the device's shared state (IPersistPropertyBag),
// where a test's overrides apply too; a fault.bind refuses the bind. Subclasses take their
// settings in configure() and list their interfaces in queryExtra (calling this one's).
//
// The device's streaming pins start when it runs (a fault.run refuses Run), pause their
// deliveries when it leaves Run and end their threads when it stops; the journal says "Pause",
// "Run" (or "Run failed 0x...") and "Stop".
#pragma once

#include <memory>
#include <vector>

#include "common/BaseFilter.h"
#include "common/DeviceState.h"

namespace lab {

class StreamingPin;

class DeviceFilter : public BaseFilter, public IPersistPropertyBag {
public:
    explicit DeviceFilter(const CLSID &clsid);

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return BaseFilter::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return BaseFilter::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return BaseFilter::Release(); }
    STDMETHODIMP GetClassID(CLSID *clsid) override { return BaseFilter::GetClassID(clsid); }
    // fault.join refuses every graph (its AddFilter fails); fault.leave refuses the first
    // removal only, so that the graph can still let go of the filter when it is released.
    STDMETHODIMP JoinFilterGraph(IFilterGraph *graph, LPCWSTR name) override;

    // IPersistPropertyBag
    STDMETHODIMP InitNew() override;
    STDMETHODIMP Load(IPropertyBag *bag, IErrorLog *log) override;
    STDMETHODIMP Save(IPropertyBag *bag, BOOL clearDirty, BOOL saveAll) override;

protected:
    void *queryExtra(REFIID iid) override;
    // Takes the device's settings; a failure fails the bind.
    virtual HRESULT configure(const std::shared_ptr<DeviceState> &device) = 0;
    // The pins that stream while the device runs, in the order they start.
    virtual std::vector<StreamingPin *> streamingPins() = 0;
    HRESULT onPause(bool fromStopped) override;
    HRESULT onRun(REFERENCE_TIME start) override;
    void onStop() override;
    // Serves the device (the constructor uses it for a filter created without a moniker).
    HRESULT useDevice(const std::shared_ptr<DeviceState> &device);
    const std::shared_ptr<DeviceState> &device() const { return m_device; }

private:
    std::shared_ptr<DeviceState> m_device;
    bool m_leaveRefused = false;
};

} // namespace lab
