// The input pin of StubBdaTuner: accepts a connection of major type
// KSDATAFORMAT_TYPE_BDA_ANTENNA and nothing else; it never receives samples.
#pragma once

#include <windows.h>
#include <dshow.h>

#include <atlbase.h>

namespace labtest {

class StubBdaTuner;

class StubBdaPin : public IPin {
public:
    explicit StubBdaPin(StubBdaTuner &filter) : m_filter(filter) {}
    StubBdaPin(const StubBdaPin &) = delete;
    StubBdaPin &operator=(const StubBdaPin &) = delete;

    bool connected() const { return m_peer != nullptr; }

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP Connect(IPin *receiver, const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP ReceiveConnection(IPin *connector, const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP Disconnect() override;
    STDMETHODIMP ConnectedTo(IPin **pin) override;
    STDMETHODIMP ConnectionMediaType(AM_MEDIA_TYPE *type) override;
    STDMETHODIMP QueryPinInfo(PIN_INFO *info) override;
    STDMETHODIMP QueryDirection(PIN_DIRECTION *direction) override;
    STDMETHODIMP QueryId(LPWSTR *id) override;
    STDMETHODIMP QueryAccept(const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP EnumMediaTypes(IEnumMediaTypes **types) override;
    STDMETHODIMP QueryInternalConnections(IPin **pins, ULONG *count) override;
    STDMETHODIMP EndOfStream() override;
    STDMETHODIMP BeginFlush() override;
    STDMETHODIMP EndFlush() override;
    STDMETHODIMP NewSegment(REFERENCE_TIME start, REFERENCE_TIME stop, double rate) override;

private:
    StubBdaTuner &m_filter;
    CComPtr<IPin> m_peer;
};

} // namespace labtest
