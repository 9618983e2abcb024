#include "bda/TuningSpaceEnumerator.h"

#include <new>

namespace lab {

HRESULT TuningSpaceEnumerator::create(const std::vector<CComPtr<ITuningSpace>> &spaces, IEnumTuningSpaces **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    TuningSpaceEnumerator *created = new (std::nothrow) TuningSpaceEnumerator(spaces);
    if (!created)
        return E_OUTOFMEMORY;
    CComPtr<IEnumTuningSpaces> hold(created);
    *out = hold.Detach();
    return S_OK;
}

STDMETHODIMP TuningSpaceEnumerator::Next(ULONG count, ITuningSpace **spaces, ULONG *fetched)
{
    if (!spaces || (count > 1 && !fetched))
        return E_POINTER;
    ULONG given = 0;
    while (given < count && m_position < m_spaces.size()) {
        m_spaces[m_position].CopyTo(&spaces[given]);
        ++given;
        ++m_position;
    }
    if (fetched)
        *fetched = given;
    // Fewer than asked for (the end of the list) is S_FALSE, as every COM enumerator answers.
    return given == count ? S_OK : S_FALSE;
}

STDMETHODIMP TuningSpaceEnumerator::Skip(ULONG count)
{
    const size_t remaining = m_spaces.size() - m_position;
    const size_t skipped = count < remaining ? count : remaining;
    m_position += skipped;
    return skipped == count ? S_OK : S_FALSE;
}

STDMETHODIMP TuningSpaceEnumerator::Reset()
{
    m_position = 0;
    return S_OK;
}

STDMETHODIMP TuningSpaceEnumerator::Clone(IEnumTuningSpaces **clone)
{
    const HRESULT hr = create(m_spaces, clone);
    if (SUCCEEDED(hr))
        static_cast<TuningSpaceEnumerator *>(*clone)->m_position = m_position;
    return hr;
}

} // namespace lab
