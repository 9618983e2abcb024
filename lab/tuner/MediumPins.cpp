#include "tuner/MediumPins.h"

namespace lab {

MediumOutputPin::MediumOutputPin(BaseFilter &filter, const std::wstring &name, const GUID &majorType)
    : OutputPin(filter, name), m_majorType(majorType)
{
}

std::vector<MediaType> MediumOutputPin::mediaTypes()
{
    return {MediaType::link(m_majorType)};
}

HRESULT MediumOutputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    return IsEqualGUID(type.majortype, m_majorType) ? S_OK : S_FALSE;
}

void *MediumOutputPin::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IKsPropertySet))
        return static_cast<IKsPropertySet *>(this);
    return OutputPin::queryExtra(iid);
}

STDMETHODIMP MediumOutputPin::Get(REFGUID set, DWORD id, LPVOID instance, DWORD instanceSize, LPVOID data,
                                  DWORD dataSize, DWORD *returned)
{
    const HRESULT hr = m_medium.get(set, id, data, dataSize, returned);
    return hr == E_PROP_SET_UNSUPPORTED ? OutputPin::Get(set, id, instance, instanceSize, data, dataSize, returned)
                                        : hr;
}

STDMETHODIMP MediumOutputPin::QuerySupported(REFGUID set, DWORD id, DWORD *support)
{
    const HRESULT hr = m_medium.querySupported(set, id, support);
    return hr == E_PROP_SET_UNSUPPORTED ? OutputPin::QuerySupported(set, id, support) : hr;
}

MediumInputPin::MediumInputPin(BaseFilter &filter, const std::wstring &name, const GUID &majorType)
    : LinkInputPin(filter, name, majorType, {})
{
}

void *MediumInputPin::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IKsPropertySet))
        return static_cast<IKsPropertySet *>(this);
    return LinkInputPin::queryExtra(iid);
}

STDMETHODIMP MediumInputPin::Set(REFGUID set, DWORD, LPVOID, DWORD, LPVOID, DWORD)
{
    return IsEqualGUID(set, kKsPinPropertySet) ? E_PROP_ID_UNSUPPORTED : E_PROP_SET_UNSUPPORTED;
}

STDMETHODIMP MediumInputPin::Get(REFGUID set, DWORD id, LPVOID, DWORD, LPVOID data, DWORD dataSize, DWORD *returned)
{
    return m_medium.get(set, id, data, dataSize, returned);
}

STDMETHODIMP MediumInputPin::QuerySupported(REFGUID set, DWORD id, DWORD *support)
{
    return m_medium.querySupported(set, id, support);
}

} // namespace lab
