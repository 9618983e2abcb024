#include "tuner/PinMedium.h"

#include <atlbase.h>

#include <vector>

namespace lab {

PinMedium PinMedium::parse(const std::wstring &text)
{
    PinMedium medium;
    if (text.empty())
        return medium;
    std::vector<wchar_t> buffer(text.begin(), text.end());
    buffer.push_back(L'\0');
    medium.m_present = SUCCEEDED(CLSIDFromString(buffer.data(), &medium.m_medium.clsMedium));
    return medium;
}

PinMedium PinMedium::of(IPin *pin)
{
    PinMedium medium;
    CComQIPtr<IKsPropertySet> properties(pin);
    DWORD returned = 0;
    if (properties && properties->Get(kKsPinPropertySet, kPinMediumsProperty, nullptr, 0, &medium.m_medium,
                                      sizeof(medium.m_medium), &returned) == S_OK)
        medium.m_present = returned == sizeof(medium.m_medium);
    return medium;
}

bool PinMedium::sameAs(const PinMedium &other) const
{
    return m_present && other.m_present && IsEqualGUID(m_medium.clsMedium, other.m_medium.clsMedium) &&
           m_medium.dw1 == other.m_medium.dw1;
}

HRESULT PinMedium::get(REFGUID set, DWORD id, LPVOID data, DWORD dataSize, DWORD *returned) const
{
    if (!IsEqualGUID(set, kKsPinPropertySet))
        return E_PROP_SET_UNSUPPORTED;
    if (id != kPinMediumsProperty || !m_present)
        return E_PROP_ID_UNSUPPORTED;
    if (!data)
        return E_POINTER;
    if (dataSize < sizeof(m_medium))
        return E_UNEXPECTED;
    *static_cast<REGPINMEDIUM *>(data) = m_medium;
    if (returned)
        *returned = sizeof(m_medium);
    return S_OK;
}

HRESULT PinMedium::querySupported(REFGUID set, DWORD id, DWORD *support) const
{
    if (!IsEqualGUID(set, kKsPinPropertySet))
        return E_PROP_SET_UNSUPPORTED;
    if (id != kPinMediumsProperty || !m_present)
        return E_PROP_ID_UNSUPPORTED;
    if (support)
        *support = KSPROPERTY_SUPPORT_GET;
    return S_OK;
}

} // namespace lab
