// IUnknown for a lab object with one interface: interlocked reference count from 0, deleted at
// the last Release, answering IUnknown and the interface.
#pragma once

#include <windows.h>
#include <unknwn.h>

namespace lab {

template <class Interface>
class ComObject : public Interface {
public:
    ComObject() = default;
    ComObject(const ComObject &) = delete;
    ComObject &operator=(const ComObject &) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override
    {
        return answer(IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, __uuidof(Interface)), out);
    }

    STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&m_refs); }

    STDMETHODIMP_(ULONG) Release() override
    {
        const LONG refs = InterlockedDecrement(&m_refs);
        if (refs == 0)
            delete this;
        return refs;
    }

protected:
    virtual ~ComObject() = default;

    // The end of QueryInterface: the interface when the identifier asked for is `answered`.
    HRESULT answer(bool answered, void **out)
    {
        if (!out)
            return E_POINTER;
        if (!answered) {
            *out = nullptr;
            return E_NOINTERFACE;
        }
        *out = static_cast<Interface *>(this);
        AddRef();
        return S_OK;
    }

    // Gives the caller the first reference to a new object (made with new (std::nothrow));
    // E_OUTOFMEMORY when there is none.
    template <class Object, class Out>
    static HRESULT handOut(Object *created, Out **out)
    {
        if (!created)
            return E_OUTOFMEMORY;
        Out *given = created;
        given->AddRef();
        *out = given;
        return S_OK;
    }

private:
    volatile LONG m_refs = 0;
};

} // namespace lab
