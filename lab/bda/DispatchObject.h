// IUnknown and IDispatch for a lab object whose one interface is a dual (IDispatch-derived)
// interface of the tuning model: ITuningSpace, ITuneRequest, ILocator and their descendants.
// The whole chain of base interfaces shares the one vtable, so QueryInterface for any of them
// answers the same pointer; the subclass says which identifiers belong to its chain.
//
// Nobody here scripts these objects, so IDispatch offers no type information (as an object
// without a type library would).
#pragma once

#include <windows.h>
#include <oaidl.h>

#include "common/LabModule.h"

namespace lab {

template <class Interface>
class DispatchObject : public Interface, private LiveObject {
public:
    DispatchObject() = default;
    DispatchObject(const DispatchObject &) = delete;
    DispatchObject &operator=(const DispatchObject &) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override
    {
        if (!out)
            return E_POINTER;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || answers(iid)) {
            *out = static_cast<Interface *>(this);
            AddRef();
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }

    STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&m_refs); }

    STDMETHODIMP_(ULONG) Release() override
    {
        const LONG refs = InterlockedDecrement(&m_refs);
        if (refs == 0)
            delete this;
        return refs;
    }

    STDMETHODIMP GetTypeInfoCount(UINT *count) override
    {
        if (!count)
            return E_POINTER;
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo **info) override
    {
        if (info)
            *info = nullptr;
        return DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR *, UINT, LCID, DISPID *) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS *, VARIANT *, EXCEPINFO *, UINT *) override
    {
        return DISP_E_MEMBERNOTFOUND;
    }

protected:
    virtual ~DispatchObject() = default;
    // True for the identifiers of Interface and its bases below IDispatch.
    virtual bool answers(REFIID iid) const = 0;

private:
    volatile LONG m_refs = 0;
};

} // namespace lab
