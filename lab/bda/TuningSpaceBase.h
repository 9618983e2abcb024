// ITuningSpace for the lab's tuning spaces: unique and friendly name, the space's class, its
// network type (the class ID of the network provider that tunes it, as text in braces), the
// frequency mapping text and the default locator. CreateTuneRequest (once the catalog admits it)
// and Clone are the same for every kind of space; subclasses make the objects of their kind.
// Faults (overrides of the "System Tuning Spaces" device): fault.get_NetworkType = HRESULT;
// fault.get_NetworkType.text = TEXT, the call succeeding with that text (a damaged space).
#pragma once

#include <windows.h>
#include <tuner.h>

#include <mutex>
#include <string>

#include <atlbase.h>

#include "bda/DispatchObject.h"
#include "bda/LockedProperties.h"
#include "bda/TuningSpaceCatalog.h"
#include "common/DeviceState.h"
#include "common/GuidText.h"

namespace lab {

// The ITuningSpace part of a tuning space, copied by Clone.
struct TuningSpaceFields {
    std::wstring uniqueName;
    std::wstring friendlyName;
    CLSID spaceClass = GUID_NULL;
    GUID networkType = GUID_NULL;
    std::wstring frequencyMapping;
    CComPtr<ILocator> defaultLocator;
};

template <class Interface>
class TuningSpaceBase : public DispatchObject<Interface>, protected LockedProperties {
public:
    explicit TuningSpaceBase(const TuningSpaceFields &fields) : m_fields(fields) {}

    STDMETHODIMP get_UniqueName(BSTR *name) override { return readText(name, m_fields.uniqueName); }
    STDMETHODIMP put_UniqueName(BSTR name) override { return writeText(m_fields.uniqueName, name); }
    STDMETHODIMP get_FriendlyName(BSTR *name) override { return readText(name, m_fields.friendlyName); }
    STDMETHODIMP put_FriendlyName(BSTR name) override { return writeText(m_fields.friendlyName, name); }
    STDMETHODIMP get_CLSID(BSTR *spaceClass) override { return readText(spaceClass, guidText(m_fields.spaceClass)); }
    STDMETHODIMP get_NetworkType(BSTR *networkType) override
    {
        const auto device = TuningSpaceCatalog::device();
        const HRESULT fault = device->hresult(L"fault.get_NetworkType");
        if (FAILED(fault)) {
            device->record(L"NetworkType failed", fault);
            return fault;
        }
        std::wstring damaged;
        if (device->find(L"fault.get_NetworkType.text", damaged))
            return readText(networkType, damaged);
        return readText(networkType, guidText(fields().networkType));
    }
    STDMETHODIMP put_NetworkType(BSTR networkType) override
    {
        GUID parsed = GUID_NULL;
        if (!networkType || !parseGuid(networkType, parsed))
            return E_INVALIDARG;
        return put__NetworkType(parsed);
    }
    STDMETHODIMP get__NetworkType(GUID *networkType) override
    {
        if (!networkType)
            return E_POINTER;
        *networkType = fields().networkType;
        return S_OK;
    }
    STDMETHODIMP put__NetworkType(REFCLSID networkType) override { return write(m_fields.networkType, networkType); }
    // Device categories, monikers and preferred components are not part of the lab's spaces.
    STDMETHODIMP EnumCategoryGUIDs(IEnumGUID **guids) override { return notImplemented(guids); }
    STDMETHODIMP EnumDeviceMonikers(IEnumMoniker **monikers) override { return notImplemented(monikers); }
    STDMETHODIMP get_DefaultPreferredComponentTypes(IComponentTypes **types) override { return notImplemented(types); }
    STDMETHODIMP put_DefaultPreferredComponentTypes(IComponentTypes *) override { return E_NOTIMPL; }
    STDMETHODIMP get_FrequencyMapping(BSTR *mapping) override { return readText(mapping, m_fields.frequencyMapping); }
    STDMETHODIMP put_FrequencyMapping(BSTR mapping) override { return writeText(m_fields.frequencyMapping, mapping); }
    STDMETHODIMP get_DefaultLocator(ILocator **locator) override
    {
        if (!locator)
            return E_POINTER;
        std::lock_guard<std::mutex> guard(m_lock);
        return m_fields.defaultLocator.CopyTo(locator);
    }
    STDMETHODIMP put_DefaultLocator(ILocator *locator) override { return write(m_fields.defaultLocator, locator); }

    STDMETHODIMP CreateTuneRequest(ITuneRequest **request) override
    {
        if (!request)
            return E_POINTER;
        *request = nullptr;
        const HRESULT allowed = TuningSpaceCatalog::admitTuneRequest(fields().uniqueName);
        if (FAILED(allowed))
            return allowed;
        return this->handOut(newTuneRequest(), request);
    }
    STDMETHODIMP Clone(ITuningSpace **clone) override
    {
        if (!clone)
            return E_POINTER;
        *clone = nullptr;
        TuningSpaceFields copied;
        const HRESULT hr = cloneFields(copied);
        if (FAILED(hr))
            return hr;
        return this->handOut(newCopy(copied), clone);
    }

protected:
    bool answers(REFIID iid) const override { return IsEqualIID(iid, __uuidof(ITuningSpace)); }

    TuningSpaceFields fields()
    {
        std::lock_guard<std::mutex> guard(m_lock);
        return m_fields;
    }
    // A new tune request of this space's kind, not yet referenced; null when out of memory.
    virtual ITuneRequest *newTuneRequest() = 0;
    // A new space of this kind with these ITuningSpace fields and this space's other values, not
    // yet referenced; null when out of memory.
    virtual ITuningSpace *newCopy(const TuningSpaceFields &fields) = 0;

    // The fields for a clone: the same values with a copy of the default locator.
    HRESULT cloneFields(TuningSpaceFields &copy)
    {
        const TuningSpaceFields source = fields();
        copy.uniqueName = source.uniqueName;
        copy.friendlyName = source.friendlyName;
        copy.spaceClass = source.spaceClass;
        copy.networkType = source.networkType;
        copy.frequencyMapping = source.frequencyMapping;
        copy.defaultLocator.Release();
        return source.defaultLocator ? source.defaultLocator->Clone(&copy.defaultLocator) : S_OK;
    }

private:
    template <class Out>
    static HRESULT notImplemented(Out **out)
    {
        if (out)
            *out = nullptr;
        return E_NOTIMPL;
    }
    HRESULT readText(BSTR *out, const std::wstring &text)
    {
        if (!out)
            return E_POINTER;
        std::lock_guard<std::mutex> guard(m_lock);
        *out = SysAllocString(text.c_str());
        return *out ? S_OK : E_OUTOFMEMORY;
    }
    HRESULT writeText(std::wstring &field, BSTR text)
    {
        std::lock_guard<std::mutex> guard(m_lock);
        field = text ? std::wstring(text, SysStringLen(text)) : std::wstring();
        return S_OK;
    }

    TuningSpaceFields m_fields;
};

} // namespace lab
