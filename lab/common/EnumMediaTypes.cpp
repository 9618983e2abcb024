#include "common/EnumMediaTypes.h"

#include <utility>

namespace lab {

EnumMediaTypes::EnumMediaTypes(IPin *pin, std::vector<MediaType> types, size_t position)
    : m_pin(pin), m_types(std::move(types)), m_position(position)
{
}

STDMETHODIMP EnumMediaTypes::Next(ULONG count, AM_MEDIA_TYPE **types, ULONG *fetched)
{
    if (!types || (count > 1 && !fetched))
        return E_POINTER;
    ULONG done = 0;
    while (done < count && m_position < m_types.size()) {
        AM_MEDIA_TYPE *copy = m_types[m_position].newCopy();
        if (!copy)
            break;
        types[done++] = copy;
        ++m_position;
    }
    if (fetched)
        *fetched = done;
    return done == count ? S_OK : S_FALSE;
}

STDMETHODIMP EnumMediaTypes::Skip(ULONG count)
{
    const size_t remaining = m_types.size() - m_position;
    if (count > remaining) {
        m_position = m_types.size();
        return S_FALSE;
    }
    m_position += count;
    return S_OK;
}

STDMETHODIMP EnumMediaTypes::Reset()
{
    m_position = 0;
    return S_OK;
}

STDMETHODIMP EnumMediaTypes::Clone(IEnumMediaTypes **clone)
{
    if (!clone)
        return E_POINTER;
    EnumMediaTypes *copy = new (std::nothrow) EnumMediaTypes(m_pin, m_types, m_position);
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IEnumMediaTypes> hold(copy);
    *clone = hold.Detach();
    return S_OK;
}

} // namespace lab
