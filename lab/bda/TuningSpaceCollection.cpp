#include "bda/TuningSpaceCollection.h"

#include <new>

#include "bda/TuningSpaceEnumerator.h"

namespace lab {

HRESULT TuningSpaceCollection::create(const std::vector<Entry> &entries, ITuningSpaces **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    return handOut(new (std::nothrow) TuningSpaceCollection(entries), out);
}

bool TuningSpaceCollection::answers(REFIID iid) const
{
    return IsEqualIID(iid, __uuidof(ITuningSpaces));
}

STDMETHODIMP TuningSpaceCollection::get_Count(LONG *count)
{
    if (!count)
        return E_POINTER;
    *count = static_cast<LONG>(m_entries.size());
    return S_OK;
}

// Scripting enumeration is not offered: nothing that drives the lab uses it.
STDMETHODIMP TuningSpaceCollection::get__NewEnum(IEnumVARIANT **enumerator)
{
    if (enumerator)
        *enumerator = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP TuningSpaceCollection::get_Item(VARIANT index, ITuningSpace **space)
{
    if (!space)
        return E_POINTER;
    *space = nullptr;
    VARIANT id;
    VariantInit(&id);
    if (FAILED(VariantChangeType(&id, &index, 0, VT_I4)))
        return E_INVALIDARG;
    for (const Entry &entry : m_entries) {
        if (entry.id == V_I4(&id))
            return entry.space->Clone(space);
    }
    return E_INVALIDARG;
}

STDMETHODIMP TuningSpaceCollection::get_EnumTuningSpaces(IEnumTuningSpaces **enumerator)
{
    std::vector<CComPtr<ITuningSpace>> spaces;
    for (const Entry &entry : m_entries) {
        CComPtr<ITuningSpace> copy;
        const HRESULT hr = entry.space->Clone(&copy);
        if (FAILED(hr))
            return hr;
        spaces.push_back(copy);
    }
    return TuningSpaceEnumerator::create(spaces, enumerator);
}

} // namespace lab
