#include "FaultyMoniker.h"

#include <MonikerProperty.h>

#include <dshow.h>

namespace sorvane {
namespace test {

CComPtr<IMoniker> FaultyMoniker::systemMoniker(const GUID &category, const wchar_t *friendlyName)
{
    CComPtr<ICreateDevEnum> devices;
    CComPtr<IEnumMoniker> monikers;
    if (FAILED(devices.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER)) ||
        devices->CreateClassEnumerator(category, &monikers, 0) != S_OK)
        return CComPtr<IMoniker>();
    for (CComPtr<IMoniker> moniker; monikers->Next(1, &moniker, nullptr) == S_OK; moniker.Release()) {
        if (MonikerProperty::read(moniker, L"FriendlyName") == kel::String(friendlyName))
            return moniker;
    }
    return CComPtr<IMoniker>();
}

CComPtr<IMoniker> FaultyMoniker::wrap(IMoniker *inner, Method refused, HRESULT refusal, const std::wstring &displayName)
{
    CComPtr<IMoniker> wrapped;
    wrapped.Attach(new FaultyMoniker(inner, refused, refusal, displayName));
    return wrapped;
}

FaultyMoniker::FaultyMoniker(IMoniker *inner, Method refused, HRESULT refusal, const std::wstring &displayName)
    : m_refs(1), m_inner(inner), m_refused(refused), m_refusal(refusal), m_displayName(displayName)
{
}

STDMETHODIMP FaultyMoniker::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPersist) || IsEqualIID(iid, IID_IPersistStream) ||
        IsEqualIID(iid, IID_IMoniker)) {
        *out = static_cast<IMoniker *>(this);
        AddRef();
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) FaultyMoniker::AddRef()
{
    return InterlockedIncrement(&m_refs);
}

STDMETHODIMP_(ULONG) FaultyMoniker::Release()
{
    const LONG refs = InterlockedDecrement(&m_refs);
    if (refs == 0)
        delete this;
    return refs;
}

STDMETHODIMP FaultyMoniker::GetClassID(CLSID *classId)
{
    return m_inner->GetClassID(classId);
}

STDMETHODIMP FaultyMoniker::IsDirty()
{
    return m_inner->IsDirty();
}

STDMETHODIMP FaultyMoniker::Load(IStream *stream)
{
    return m_inner->Load(stream);
}

STDMETHODIMP FaultyMoniker::Save(IStream *stream, WINBOOL clearDirty)
{
    return m_inner->Save(stream, clearDirty);
}

STDMETHODIMP FaultyMoniker::GetSizeMax(ULARGE_INTEGER *size)
{
    return m_inner->GetSizeMax(size);
}

STDMETHODIMP FaultyMoniker::BindToObject(IBindCtx *context, IMoniker *left, REFIID iid, void **out)
{
    return m_inner->BindToObject(context, left, iid, out);
}

STDMETHODIMP FaultyMoniker::BindToStorage(IBindCtx *context, IMoniker *left, REFIID iid, void **out)
{
    if (m_refused != BIND_TO_STORAGE)
        return m_inner->BindToStorage(context, left, iid, out);
    if (out)
        *out = nullptr;
    return m_refusal;
}

STDMETHODIMP FaultyMoniker::Reduce(IBindCtx *context, DWORD howFar, IMoniker **toLeft, IMoniker **reduced)
{
    return m_inner->Reduce(context, howFar, toLeft, reduced);
}

STDMETHODIMP FaultyMoniker::ComposeWith(IMoniker *right, WINBOOL onlyIfNotGeneric, IMoniker **composite)
{
    return m_inner->ComposeWith(right, onlyIfNotGeneric, composite);
}

STDMETHODIMP FaultyMoniker::Enum(WINBOOL forward, IEnumMoniker **monikers)
{
    return m_inner->Enum(forward, monikers);
}

STDMETHODIMP FaultyMoniker::IsEqual(IMoniker *other)
{
    return m_inner->IsEqual(other);
}

STDMETHODIMP FaultyMoniker::Hash(DWORD *hash)
{
    return m_inner->Hash(hash);
}

STDMETHODIMP FaultyMoniker::IsRunning(IBindCtx *context, IMoniker *left, IMoniker *newlyRunning)
{
    return m_inner->IsRunning(context, left, newlyRunning);
}

STDMETHODIMP FaultyMoniker::GetTimeOfLastChange(IBindCtx *context, IMoniker *left, FILETIME *time)
{
    return m_inner->GetTimeOfLastChange(context, left, time);
}

STDMETHODIMP FaultyMoniker::Inverse(IMoniker **inverse)
{
    return m_inner->Inverse(inverse);
}

STDMETHODIMP FaultyMoniker::CommonPrefixWith(IMoniker *other, IMoniker **prefix)
{
    return m_inner->CommonPrefixWith(other, prefix);
}

STDMETHODIMP FaultyMoniker::RelativePathTo(IMoniker *other, IMoniker **relativePath)
{
    return m_inner->RelativePathTo(other, relativePath);
}

STDMETHODIMP FaultyMoniker::GetDisplayName(IBindCtx *context, IMoniker *left, LPOLESTR *name)
{
    if (m_refused == GET_DISPLAY_NAME) {
        if (name)
            *name = nullptr;
        return m_refusal;
    }
    if (m_displayName.empty())
        return m_inner->GetDisplayName(context, left, name);
    if (!name)
        return E_POINTER;
    const size_t bytes = (m_displayName.size() + 1) * sizeof(wchar_t);
    *name = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
    if (!*name)
        return E_OUTOFMEMORY;
    memcpy(*name, m_displayName.c_str(), bytes);
    return S_OK;
}

STDMETHODIMP FaultyMoniker::ParseDisplayName(IBindCtx *context, IMoniker *left, LPOLESTR name, ULONG *eaten,
                                             IMoniker **out)
{
    return m_inner->ParseDisplayName(context, left, name, eaten, out);
}

STDMETHODIMP FaultyMoniker::IsSystemMoniker(DWORD *kind)
{
    return m_inner->IsSystemMoniker(kind);
}

} // namespace test
} // namespace sorvane
