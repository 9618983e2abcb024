#include "common/ClassFactory.h"

namespace lab {

ClassFactory::ClassFactory(CreateFunction create) : m_create(create) { LabModule::lockServer(true); }

ClassFactory::~ClassFactory() { LabModule::lockServer(false); }

STDMETHODIMP ClassFactory::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory)) {
        *out = static_cast<IClassFactory *>(this);
        AddRef();
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) ClassFactory::AddRef() { return InterlockedIncrement(&m_refs); }

STDMETHODIMP_(ULONG) ClassFactory::Release()
{
    const LONG refs = InterlockedDecrement(&m_refs);
    if (refs == 0)
        delete this;
    return refs;
}

STDMETHODIMP ClassFactory::CreateInstance(IUnknown *outer, REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    return m_create(iid, out);
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock)
{
    LabModule::lockServer(lock != FALSE);
    return S_OK;
}

} // namespace lab
