#include "bda/SystemTuningSpaces.h"

#include "bda/ScopedBstr.h"
#include "bda/TuningSpaceCatalog.h"
#include "bda/TuningSpaceCollection.h"
#include "bda/TuningSpaceEnumerator.h"
#include "common/ClassRegistry.h"
#include "common/DeviceState.h"
#include "common/GuidText.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::plain(CLSID_SystemTuningSpaces, L"Sorvane Lab System Tuning Spaces",
                                                      &createObject<SystemTuningSpaces, ITuningSpaceContainer>));

} // namespace

SystemTuningSpaces::SystemTuningSpaces()
{
    // The container holds one space a unique name, the first installed.
    for (const std::wstring &entry : TuningSpaceCatalog::installedNames()) {
        CComPtr<ITuningSpace> space;
        if (FAILED(TuningSpaceCatalog::create(entry, space)))
            continue;
        const std::wstring name = TuningSpaceCatalog::uniqueNameOf(space);
        if (indexOf(name) < 0) {
            m_names.push_back(name);
            m_spaces.push_back(space);
        }
    }
}

bool SystemTuningSpaces::answers(REFIID iid) const
{
    return IsEqualIID(iid, __uuidof(ITuningSpaceContainer));
}

int SystemTuningSpaces::indexOf(const std::wstring &name) const
{
    for (size_t i = 0; i < m_names.size(); ++i) {
        if (m_names[i] == name)
            return static_cast<int>(i);
    }
    return -1;
}

int SystemTuningSpaces::lookUp(const VARIANT &index, std::wstring &label) const
{
    if (V_VT(&index) == VT_BSTR) {
        label = V_BSTR(&index) ? std::wstring(V_BSTR(&index), SysStringLen(V_BSTR(&index))) : std::wstring();
        return indexOf(label);
    }
    VARIANT id;
    VariantInit(&id);
    if (FAILED(VariantChangeType(&id, const_cast<VARIANT *>(&index), 0, VT_I4))) {
        label = L"?";
        return -1;
    }
    const long value = V_I4(&id);
    label = std::to_wstring(value);
    return value >= 1 && value <= static_cast<long>(m_spaces.size()) ? static_cast<int>(value - 1) : -1;
}

STDMETHODIMP SystemTuningSpaces::get_Count(LONG *count)
{
    if (!count)
        return E_POINTER;
    *count = static_cast<LONG>(m_spaces.size());
    return S_OK;
}

STDMETHODIMP SystemTuningSpaces::get_Item(VARIANT index, ITuningSpace **space)
{
    if (!space)
        return E_POINTER;
    *space = nullptr;
    const auto device = TuningSpaceCatalog::device();
    const HRESULT fault = device->hresult(L"fault.get_Item");
    if (FAILED(fault)) {
        device->record(L"Item failed", fault);
        return fault;
    }
    std::wstring label;
    const int position = lookUp(index, label);
    if (position < 0) {
        device->record(L"Item " + label + L" not found");
        return E_INVALIDARG;
    }
    device->record(L"Item " + label + L" found");
    return m_spaces[static_cast<size_t>(position)]->Clone(space);
}

STDMETHODIMP SystemTuningSpaces::FindID(ITuningSpace *space, LONG *id)
{
    if (!space || !id)
        return E_POINTER;
    const std::wstring name = TuningSpaceCatalog::uniqueNameOf(space);
    const int position = indexOf(name);
    const auto device = TuningSpaceCatalog::device();
    if (position < 0) {
        device->record(L"FindID " + name + L" not found");
        return E_INVALIDARG;
    }
    *id = position + 1;
    device->record(L"FindID " + name + L" " + std::to_wstring(*id));
    return S_OK;
}

STDMETHODIMP SystemTuningSpaces::get_EnumTuningSpaces(IEnumTuningSpaces **enumerator)
{
    if (!enumerator)
        return E_POINTER;
    *enumerator = nullptr;
    std::vector<CComPtr<ITuningSpace>> copies;
    for (const CComPtr<ITuningSpace> &space : m_spaces) {
        CComPtr<ITuningSpace> copy;
        const HRESULT hr = space->Clone(&copy);
        if (FAILED(hr))
            return hr;
        copies.push_back(copy);
    }
    TuningSpaceCatalog::device()->record(L"EnumTuningSpaces " + std::to_wstring(copies.size()));
    return TuningSpaceEnumerator::create(copies, enumerator);
}

// Scripting enumeration and changes to the system's spaces are not offered: nothing that drives
// the lab uses them, and the lab's system is read-only.
STDMETHODIMP SystemTuningSpaces::get__NewEnum(IEnumVARIANT **enumerator)
{
    if (enumerator)
        *enumerator = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP SystemTuningSpaces::put_Item(VARIANT, ITuningSpace *)
{
    return E_NOTIMPL;
}

STDMETHODIMP SystemTuningSpaces::TuningSpacesForCLSID(BSTR spaceClass, ITuningSpaces **spaces)
{
    CLSID parsed = GUID_NULL;
    if (!spaceClass || !parseGuid(spaceClass, parsed)) {
        if (spaces)
            *spaces = nullptr;
        return E_INVALIDARG;
    }
    return _TuningSpacesForCLSID(parsed, spaces);
}

STDMETHODIMP SystemTuningSpaces::_TuningSpacesForCLSID(REFCLSID spaceClass, ITuningSpaces **spaces)
{
    const std::wstring wanted = guidText(spaceClass);
    return collect(
        [&](ITuningSpace *space) {
            ScopedBstr text;
            return SUCCEEDED(space->get_CLSID(text.out())) && _wcsicmp(text.text().c_str(), wanted.c_str()) == 0;
        },
        spaces);
}

STDMETHODIMP SystemTuningSpaces::TuningSpacesForName(BSTR name, ITuningSpaces **spaces)
{
    const std::wstring wanted = name ? std::wstring(name, SysStringLen(name)) : std::wstring();
    return collect(
        [&](ITuningSpace *space) {
            ScopedBstr friendly;
            space->get_FriendlyName(friendly.out());
            return TuningSpaceCatalog::uniqueNameOf(space) == wanted || friendly.text() == wanted;
        },
        spaces);
}

template <class Matches>
HRESULT SystemTuningSpaces::collect(Matches matches, ITuningSpaces **spaces) const
{
    if (!spaces)
        return E_POINTER;
    *spaces = nullptr;
    std::vector<TuningSpaceCollection::Entry> found;
    for (size_t i = 0; i < m_spaces.size(); ++i) {
        if (matches(m_spaces[i].p))
            found.push_back({static_cast<long>(i + 1), m_spaces[i]});
    }
    return TuningSpaceCollection::create(found, spaces);
}

STDMETHODIMP SystemTuningSpaces::Add(ITuningSpace *, VARIANT *)
{
    return E_NOTIMPL;
}

STDMETHODIMP SystemTuningSpaces::Remove(VARIANT)
{
    return E_NOTIMPL;
}

STDMETHODIMP SystemTuningSpaces::get_MaxCount(LONG *maxCount)
{
    if (!maxCount)
        return E_POINTER;
    *maxCount = static_cast<LONG>(m_spaces.size());
    return S_OK;
}

STDMETHODIMP SystemTuningSpaces::put_MaxCount(LONG)
{
    return E_NOTIMPL;
}

} // namespace lab
