#include "FaultySampleGrabber.h"

#include <SdkGuids.h>

namespace sorvane {
namespace test {

namespace {

typedef HRESULT(WINAPI *GetClassObjectFunction)(REFCLSID, REFIID, void **);

// The grabber's own class object, straight from its DLL: under CLSID_SampleGrabber COM now
// finds the faulty one.
HRESULT systemGrabberFactory(IClassFactory **factory)
{
    const HMODULE qedit = LoadLibraryW(L"qedit.dll");
    if (!qedit)
        return HRESULT_FROM_WIN32(GetLastError());
    const auto getClassObject = reinterpret_cast<GetClassObjectFunction>(
        reinterpret_cast<void (*)()>(GetProcAddress(qedit, "DllGetClassObject")));
    if (!getClassObject)
        return HRESULT_FROM_WIN32(GetLastError());
    return getClassObject(CLSID_SampleGrabber, IID_PPV_ARGS(factory));
}

} // namespace

FaultySampleGrabber::FaultySampleGrabber(Method refused, HRESULT refusal)
    : m_refs(1), m_refused(refused), m_refusal(refusal), m_grabber(nullptr)
{
}

FaultySampleGrabber::~FaultySampleGrabber() = default;

HRESULT FaultySampleGrabber::create(Method refused, HRESULT refusal, REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    FaultySampleGrabber *grabber = new FaultySampleGrabber(refused, refusal);
    HRESULT hr = grabber->aggregateSystemGrabber();
    if (SUCCEEDED(hr))
        hr = grabber->QueryInterface(iid, out);
    grabber->Release();
    return hr;
}

HRESULT FaultySampleGrabber::aggregateSystemGrabber()
{
    CComPtr<IClassFactory> factory;
    HRESULT hr = systemGrabberFactory(&factory);
    if (FAILED(hr))
        return hr;
    hr = factory->CreateInstance(static_cast<ISampleGrabber *>(this), IID_PPV_ARGS(&m_inner));
    if (FAILED(hr))
        return hr;
    // The inner interface counts on the outer object; holding it must not keep us alive.
    hr = m_inner->QueryInterface(IID_PPV_ARGS(&m_grabber));
    if (SUCCEEDED(hr))
        Release();
    return hr;
}

STDMETHODIMP FaultySampleGrabber::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_ISampleGrabber)) {
        *out = static_cast<ISampleGrabber *>(this);
        AddRef();
        return S_OK;
    }
    return m_inner->QueryInterface(iid, out);
}

STDMETHODIMP_(ULONG) FaultySampleGrabber::AddRef()
{
    return InterlockedIncrement(&m_refs);
}

STDMETHODIMP_(ULONG) FaultySampleGrabber::Release()
{
    const LONG refs = InterlockedDecrement(&m_refs);
    if (refs == 0) {
        // Guards against the inner object's own releases coming back here while it goes.
        m_refs = 1;
        delete this;
    }
    return refs;
}

STDMETHODIMP FaultySampleGrabber::SetOneShot(WINBOOL oneShot)
{
    return m_refused == SET_ONE_SHOT ? m_refusal : m_grabber->SetOneShot(oneShot);
}

STDMETHODIMP FaultySampleGrabber::SetMediaType(const AM_MEDIA_TYPE *type)
{
    return m_refused == SET_MEDIA_TYPE ? m_refusal : m_grabber->SetMediaType(type);
}

STDMETHODIMP FaultySampleGrabber::GetConnectedMediaType(AM_MEDIA_TYPE *type)
{
    return m_grabber->GetConnectedMediaType(type);
}

STDMETHODIMP FaultySampleGrabber::SetBufferSamples(WINBOOL bufferThem)
{
    return m_refused == SET_BUFFER_SAMPLES ? m_refusal : m_grabber->SetBufferSamples(bufferThem);
}

STDMETHODIMP FaultySampleGrabber::GetCurrentBuffer(LONG *size, LONG *buffer)
{
    if (!buffer && m_refused == GET_BUFFER_SIZE)
        return m_refusal;
    if (!buffer && m_refused == SHORT_BUFFER && size) {
        *size = kShortBufferSize;
        return S_OK;
    }
    if (buffer && m_refused == GET_BUFFER)
        return m_refusal;
    return m_grabber->GetCurrentBuffer(size, buffer);
}

STDMETHODIMP FaultySampleGrabber::GetCurrentSample(IMediaSample **sample)
{
    return m_grabber->GetCurrentSample(sample);
}

STDMETHODIMP FaultySampleGrabber::SetCallback(ISampleGrabberCB *callback, LONG whichMethod)
{
    // Detaching (no callback) always works, so that a refused attach can be cleaned up.
    if (m_refused == SET_CALLBACK && callback)
        return m_refusal;
    return m_grabber->SetCallback(callback, whichMethod);
}

} // namespace test
} // namespace sorvane
