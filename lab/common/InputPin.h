// An input pin with IMemInputPin: accepts a connection whose type checkMediaType allows,
// offers a memory allocator, and hands each sample to receive() on the upstream thread.
#pragma once

#include <atomic>

#include "common/BasePin.h"

namespace lab {

class InputPin : public BasePin, public IMemInputPin {
public:
    InputPin(BaseFilter &filter, const std::wstring &name);

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return BasePin::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return BasePin::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return BasePin::Release(); }

    // IPin
    STDMETHODIMP Connect(IPin *receiver, const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP ReceiveConnection(IPin *connector, const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP BeginFlush() override;
    STDMETHODIMP EndFlush() override;

    // IMemInputPin
    STDMETHODIMP GetAllocator(IMemAllocator **allocator) override;
    STDMETHODIMP NotifyAllocator(IMemAllocator *allocator, BOOL readOnly) override;
    STDMETHODIMP GetAllocatorRequirements(ALLOCATOR_PROPERTIES *properties) override;
    STDMETHODIMP Receive(IMediaSample *sample) override;
    STDMETHODIMP ReceiveMultiple(IMediaSample **samples, long count, long *processed) override;
    STDMETHODIMP ReceiveCanBlock() override;

protected:
    void *queryExtra(REFIID iid) override;
    void onDisconnected() override;
    // One sample while the filter is not stopped and the pin not flushing.
    virtual HRESULT receive(IMediaSample *sample) = 0;
    bool flushing() const { return m_flushing; }

private:
    CComPtr<IMemAllocator> m_allocator;
    std::atomic<bool> m_flushing{false};
};

} // namespace lab
