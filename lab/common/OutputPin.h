// An output pin: connects to a downstream input pin (trying its own types, then the peer's),
// negotiates the allocator and delivers samples. Subclasses choose the buffer size.
// Given a pin category (PIN_CATEGORY_CAPTURE ...), the pin reports it through IKsPropertySet,
// which is how the capture graph builder tells capture pins from others.
#pragma once

#include "common/BasePin.h"

namespace lab {

class OutputPin : public BasePin, public IKsPropertySet {
public:
    OutputPin(BaseFilter &filter, const std::wstring &name, const GUID &category = GUID_NULL);

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return BasePin::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return BasePin::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return BasePin::Release(); }

    // IKsPropertySet: the pin category, read-only.
    STDMETHODIMP Set(REFGUID set, DWORD id, LPVOID instance, DWORD instanceSize, LPVOID data, DWORD dataSize) override;
    STDMETHODIMP Get(REFGUID set, DWORD id, LPVOID instance, DWORD instanceSize, LPVOID data, DWORD dataSize,
                     DWORD *returned) override;
    STDMETHODIMP QuerySupported(REFGUID set, DWORD id, DWORD *support) override;

    STDMETHODIMP Connect(IPin *receiver, const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP ReceiveConnection(IPin *connector, const AM_MEDIA_TYPE *type) override;

    HRESULT active() override;
    void inactive() override;

    // An empty sample from the negotiated allocator (blocks while all are in use) and its data.
    HRESULT getBuffer(CComPtr<IMediaSample> &sample, BYTE *&data);
    HRESULT deliver(IMediaSample *sample);
    HRESULT deliverEndOfStream();
    HRESULT deliverBeginFlush();
    HRESULT deliverEndFlush();

protected:
    void *queryExtra(REFIID iid) override;
    // Bytes one sample of the connected type needs.
    virtual long bufferSize();
    virtual long bufferCount() { return 4; }
    void onDisconnected() override;

private:
    HRESULT tryConnect(IPin *receiver, const AM_MEDIA_TYPE &type);
    HRESULT decideAllocator();
    HRESULT setupAllocator(IMemAllocator *allocator, const ALLOCATOR_PROPERTIES &wanted);

    const GUID m_category;
    CComPtr<IMemInputPin> m_input;
    CComPtr<IMemAllocator> m_allocator;
};

} // namespace lab
