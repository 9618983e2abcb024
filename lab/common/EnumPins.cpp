#include "common/EnumPins.h"

#include "common/BaseFilter.h"
#include "common/BasePin.h"

namespace lab {

EnumPins::EnumPins(BaseFilter &filter, int position) : m_filter(filter), m_hold(&filter), m_position(position) {}

STDMETHODIMP EnumPins::Next(ULONG count, IPin **pins, ULONG *fetched)
{
    if (!pins || (count > 1 && !fetched))
        return E_POINTER;
    ULONG done = 0;
    while (done < count && m_position < m_filter.pinCount()) {
        BasePin *pin = m_filter.pin(m_position++);
        pins[done++] = pin;
        pin->AddRef();
    }
    if (fetched)
        *fetched = done;
    return done == count ? S_OK : S_FALSE;
}

STDMETHODIMP EnumPins::Skip(ULONG count)
{
    const int remaining = m_filter.pinCount() - m_position;
    if (static_cast<int>(count) > remaining) {
        m_position = m_filter.pinCount();
        return S_FALSE;
    }
    m_position += static_cast<int>(count);
    return S_OK;
}

STDMETHODIMP EnumPins::Reset()
{
    m_position = 0;
    return S_OK;
}

STDMETHODIMP EnumPins::Clone(IEnumPins **clone)
{
    if (!clone)
        return E_POINTER;
    EnumPins *copy = new (std::nothrow) EnumPins(m_filter, m_position);
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IEnumPins> hold(copy);
    *clone = hold.Detach();
    return S_OK;
}

} // namespace lab
