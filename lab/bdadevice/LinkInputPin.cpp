#include "bdadevice/LinkInputPin.h"

#include <utility>

#include "common/BaseFilter.h"

namespace lab {

LinkInputPin::LinkInputPin(BaseFilter &filter, const std::wstring &name, const GUID &majorType,
                           std::vector<GUID> subTypes)
    : InputPin(filter, name), m_majorType(majorType), m_subTypes(std::move(subTypes))
{
}

void LinkInputPin::useDevice(const std::shared_ptr<DeviceState> &device)
{
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    m_device = device;
}

HRESULT LinkInputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    {
        std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
        if (m_device && m_device->flag(L"fault.connect"))
            return S_FALSE;
    }
    if (!IsEqualGUID(type.majortype, m_majorType))
        return S_FALSE;
    if (m_subTypes.empty())
        return S_OK;
    for (const GUID &subType : m_subTypes) {
        if (IsEqualGUID(type.subtype, subType))
            return S_OK;
    }
    return S_FALSE;
}

std::vector<MediaType> LinkInputPin::mediaTypes()
{
    std::vector<MediaType> types;
    for (const GUID &subType : m_subTypes)
        types.push_back(MediaType::link(m_majorType, subType));
    if (m_subTypes.empty())
        types.push_back(MediaType::link(m_majorType));
    return types;
}

CComPtr<IBaseFilter> LinkInputPin::upstreamFilter()
{
    CComPtr<IPin> peer;
    if (FAILED(ConnectedTo(&peer)) || !peer)
        return nullptr;
    PIN_INFO info = {};
    if (FAILED(peer->QueryPinInfo(&info)))
        return nullptr;
    CComPtr<IBaseFilter> filter;
    filter.Attach(info.pFilter);
    return filter;
}

} // namespace lab
