#pragma once

#include <windows.h>
#include <dshow.h>
#include <qedit.h>

#include <atlbase.h>

namespace sorvane {
namespace test {

// The system's sample grabber, aggregated, with one ISampleGrabber method refusing with a
// given code; everything else (the filter, its pins) is the system's own object.
class FaultySampleGrabber final : public ISampleGrabber {
public:
    enum Method {
        SET_MEDIA_TYPE,
        SET_ONE_SHOT,
        SET_BUFFER_SAMPLES,
        SET_CALLBACK,
        // GetCurrentBuffer asked for the size (no buffer given)
        GET_BUFFER_SIZE,
        // GetCurrentBuffer asked for the bytes, after a size query that worked
        GET_BUFFER,
        // not a refusal: the size query succeeds and reports one byte less than a
        // transport-stream packet, as after a runt sample
        SHORT_BUFFER
    };
    static const LONG kShortBufferSize = 187;

    // Makes one, answering `iid`, as a class factory would.
    static HRESULT create(Method refused, HRESULT refusal, REFIID iid, void **out);

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP SetOneShot(WINBOOL oneShot) override;
    STDMETHODIMP SetMediaType(const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP GetConnectedMediaType(AM_MEDIA_TYPE *type) override;
    STDMETHODIMP SetBufferSamples(WINBOOL bufferThem) override;
    STDMETHODIMP GetCurrentBuffer(LONG *size, LONG *buffer) override;
    STDMETHODIMP GetCurrentSample(IMediaSample **sample) override;
    STDMETHODIMP SetCallback(ISampleGrabberCB *callback, LONG whichMethod) override;

private:
    FaultySampleGrabber(Method refused, HRESULT refusal);
    ~FaultySampleGrabber();
    HRESULT aggregateSystemGrabber();

    LONG m_refs;
    Method m_refused;
    HRESULT m_refusal;
    CComPtr<IUnknown> m_inner; // the system grabber's own IUnknown
    ISampleGrabber *m_grabber; // its grabber interface, not counted (it counts on us)
};

} // namespace test
} // namespace sorvane
