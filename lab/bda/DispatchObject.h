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

#include "common/ComObject.h"
#include "common/LabModule.h"

namespace lab {

template <class Interface>
class DispatchObject : public ComObject<Interface>, private LiveObject {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void **out) override
    {
        return this->answer(IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || answers(iid), out);
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
    // True for the identifiers of Interface and its bases below IDispatch.
    virtual bool answers(REFIID iid) const = 0;
};

} // namespace lab
