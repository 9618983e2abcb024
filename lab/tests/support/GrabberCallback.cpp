#include "GrabberCallback.h"

namespace labtest {

STDMETHODIMP GrabberCallback::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_ISampleGrabberCB)) {
        *out = static_cast<ISampleGrabberCB *>(this);
        AddRef();
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) GrabberCallback::AddRef()
{
    return InterlockedIncrement(&m_refs);
}

STDMETHODIMP_(ULONG) GrabberCallback::Release()
{
    const LONG refs = InterlockedDecrement(&m_refs);
    if (refs == 0)
        delete this;
    return refs;
}

} // namespace labtest
