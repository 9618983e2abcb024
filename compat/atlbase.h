// ATL's smart COM pointers for toolchains that ship no ATL (mingw-w64).
// Semantics follow ATL: construction and assignment AddRef, destruction Releases,
// operator& asserts that the pointer is empty so an out-parameter cannot leak.
#pragma once

#include <windows.h>
#include <unknwn.h>
#include <cassert>

#ifndef ATLASSERT
#define ATLASSERT(expr) assert(expr)
#endif

template <class T>
class CComPtr {
public:
    CComPtr() noexcept : p(nullptr) {}
    CComPtr(T* lp) noexcept : p(lp) { if (p) p->AddRef(); }
    CComPtr(const CComPtr& lp) noexcept : CComPtr(lp.p) {}
    CComPtr(CComPtr&& lp) noexcept : p(lp.p) { lp.p = nullptr; }
    ~CComPtr() { if (p) p->Release(); }

    CComPtr& operator=(T* lp) noexcept
    {
        if (p != lp) {
            if (lp) lp->AddRef();
            T* old = p;
            p = lp;
            if (old) old->Release();
        }
        return *this;
    }
    CComPtr& operator=(const CComPtr& lp) noexcept { return *this = lp.p; }
    // `p = makePointer();` moves. The address is taken past the overloaded operator& (with
    // the compilers' builtin: <memory> would clash with strsafe.h in sources that use both).
    CComPtr& operator=(CComPtr&& lp) noexcept
    {
        if (this != __builtin_addressof(lp)) {
            T* old = p;
            p = lp.p;
            lp.p = nullptr;
            if (old) old->Release();
        }
        return *this;
    }

    operator T*() const noexcept { return p; }
    T& operator*() const { ATLASSERT(p != nullptr); return *p; }
    T** operator&() { ATLASSERT(p == nullptr); return &p; }
    T* operator->() const { ATLASSERT(p != nullptr); return p; }
    bool operator!() const noexcept { return p == nullptr; }
    bool operator==(T* lp) const noexcept { return p == lp; }
    bool operator!=(T* lp) const noexcept { return p != lp; }

    void Release() noexcept
    {
        T* old = p;
        if (old) {
            p = nullptr;
            old->Release();
        }
    }
    void Attach(T* lp) noexcept
    {
        if (p) p->Release();
        p = lp;
    }
    T* Detach() noexcept
    {
        T* old = p;
        p = nullptr;
        return old;
    }
    HRESULT CopyTo(T** out) const noexcept
    {
        if (!out) return E_POINTER;
        *out = p;
        if (p) p->AddRef();
        return S_OK;
    }
    template <class Q>
    HRESULT QueryInterface(Q** out) const noexcept
    {
        ATLASSERT(out != nullptr && *out == nullptr);
        return p->QueryInterface(__uuidof(Q), reinterpret_cast<void**>(out));
    }
    HRESULT CoCreateInstance(REFCLSID clsid, LPUNKNOWN outer = nullptr, DWORD context = CLSCTX_ALL) noexcept
    {
        ATLASSERT(p == nullptr);
        return ::CoCreateInstance(clsid, outer, context, __uuidof(T), reinterpret_cast<void**>(&p));
    }
    bool IsEqualObject(IUnknown* other) const noexcept
    {
        if (!p && !other) return true;
        if (!p || !other) return false;
        CComPtr<IUnknown> mine;
        CComPtr<IUnknown> theirs;
        p->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&mine.p));
        other->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&theirs.p));
        return mine.p == theirs.p;
    }

    T* p;
};

// Queries the interface on construction or assignment from any COM pointer.
template <class T, const IID* piid = &__uuidof(T)>
class CComQIPtr : public CComPtr<T> {
public:
    CComQIPtr() noexcept {}
    CComQIPtr(T* lp) noexcept : CComPtr<T>(lp) {}
    CComQIPtr(const CComQIPtr& lp) noexcept : CComPtr<T>(lp.p) {}
    CComQIPtr(IUnknown* lp) noexcept { query(lp); }

    CComQIPtr& operator=(T* lp) noexcept { CComPtr<T>::operator=(lp); return *this; }
    CComQIPtr& operator=(const CComQIPtr& lp) noexcept { CComPtr<T>::operator=(lp.p); return *this; }
    CComQIPtr& operator=(IUnknown* lp) noexcept
    {
        if (static_cast<IUnknown*>(this->p) != lp) {
            CComPtr<T>::Release();
            query(lp);
        }
        return *this;
    }

private:
    void query(IUnknown* lp) noexcept
    {
        if (lp) lp->QueryInterface(*piid, reinterpret_cast<void**>(&this->p));
    }
};

// IUnknown itself needs no query on assignment. Partial, because mingw's __uuidof(IUnknown)
// is not the address of IID_IUnknown: the default argument would miss a full specialization.
template <const IID* piid>
class CComQIPtr<IUnknown, piid> : public CComPtr<IUnknown> {
public:
    CComQIPtr() noexcept {}
    CComQIPtr(IUnknown* lp) noexcept { if (lp) lp->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&p)); }
    CComQIPtr(const CComQIPtr& lp) noexcept : CComPtr<IUnknown>(lp.p) {}
    CComQIPtr& operator=(IUnknown* lp) noexcept
    {
        CComPtr<IUnknown>::Release();
        if (lp) lp->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&p));
        return *this;
    }
};
