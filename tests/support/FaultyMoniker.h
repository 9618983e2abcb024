#pragma once

#include <windows.h>
#include <objidl.h>

#include <atlbase.h>
#include <string>

namespace sorvane {
namespace test {

// A device moniker of the system's device enumerator, answered for by the test: one of its
// calls refusing with a given code, or its display name given in the form Windows gives a
// hardware device (@device:pnp:\\?\usb#...#{category}\global), which Wine's enumerator never
// makes. Everything else is the system moniker's own.
class FaultyMoniker final : public IMoniker {
public:
    enum Method { NONE, GET_DISPLAY_NAME, BIND_TO_STORAGE };

    // The system's moniker of the device named `friendlyName` in `category`; null if none.
    static CComPtr<IMoniker> systemMoniker(const GUID &category, const wchar_t *friendlyName);
    // `inner` with `refused` failing with `refusal`; a non-empty `displayName` replaces its own.
    static CComPtr<IMoniker> wrap(IMoniker *inner, Method refused, HRESULT refusal,
                                  const std::wstring &displayName = std::wstring());

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP GetClassID(CLSID *classId) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(IStream *stream) override;
    STDMETHODIMP Save(IStream *stream, WINBOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER *size) override;

    STDMETHODIMP BindToObject(IBindCtx *context, IMoniker *left, REFIID iid, void **out) override;
    STDMETHODIMP BindToStorage(IBindCtx *context, IMoniker *left, REFIID iid, void **out) override;
    STDMETHODIMP Reduce(IBindCtx *context, DWORD howFar, IMoniker **toLeft, IMoniker **reduced) override;
    STDMETHODIMP ComposeWith(IMoniker *right, WINBOOL onlyIfNotGeneric, IMoniker **composite) override;
    STDMETHODIMP Enum(WINBOOL forward, IEnumMoniker **monikers) override;
    STDMETHODIMP IsEqual(IMoniker *other) override;
    STDMETHODIMP Hash(DWORD *hash) override;
    STDMETHODIMP IsRunning(IBindCtx *context, IMoniker *left, IMoniker *newlyRunning) override;
    STDMETHODIMP GetTimeOfLastChange(IBindCtx *context, IMoniker *left, FILETIME *time) override;
    STDMETHODIMP Inverse(IMoniker **inverse) override;
    STDMETHODIMP CommonPrefixWith(IMoniker *other, IMoniker **prefix) override;
    STDMETHODIMP RelativePathTo(IMoniker *other, IMoniker **relativePath) override;
    STDMETHODIMP GetDisplayName(IBindCtx *context, IMoniker *left, LPOLESTR *name) override;
    STDMETHODIMP ParseDisplayName(IBindCtx *context, IMoniker *left, LPOLESTR name, ULONG *eaten,
                                  IMoniker **out) override;
    STDMETHODIMP IsSystemMoniker(DWORD *kind) override;

private:
    FaultyMoniker(IMoniker *inner, Method refused, HRESULT refusal, const std::wstring &displayName);
    ~FaultyMoniker() = default;

    LONG m_refs;
    CComPtr<IMoniker> m_inner;
    Method m_refused;
    HRESULT m_refusal;
    std::wstring m_displayName;
};

} // namespace test
} // namespace sorvane
