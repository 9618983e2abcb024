#include "bda/AntennaPin.h"

#include "common/BaseFilter.h"
#include "lab/BdaGuids.h"

namespace lab {

AntennaPin::AntennaPin(BaseFilter &filter) : BasePin(filter, L"Antenna Out", PINDIR_OUTPUT) {}

std::vector<MediaType> AntennaPin::mediaTypes()
{
    AM_MEDIA_TYPE type = {};
    type.majortype = kMediaTypeBdaAntenna;
    type.bFixedSizeSamples = TRUE;
    type.lSampleSize = 1;
    return {MediaType(type)};
}

HRESULT AntennaPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    return IsEqualGUID(type.majortype, kMediaTypeBdaAntenna) ? S_OK : VFW_E_TYPE_NOT_ACCEPTED;
}

STDMETHODIMP AntennaPin::Connect(IPin *receiver, const AM_MEDIA_TYPE *type)
{
    if (!receiver)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    const HRESULT allowed = canConnect();
    if (FAILED(allowed))
        return allowed;
    const MediaType offered = mediaTypes().front();
    if (type && !IsEqualGUID(type->majortype, GUID_NULL) && checkMediaType(*type) != S_OK)
        return VFW_E_NO_ACCEPTABLE_TYPES;
    setConnection(receiver, offered.get());
    const HRESULT hr = receiver->ReceiveConnection(this, &offered.get());
    if (FAILED(hr)) {
        clearConnection();
        return hr == VFW_E_TYPE_NOT_ACCEPTED ? VFW_E_NO_ACCEPTABLE_TYPES : hr;
    }
    return S_OK;
}

STDMETHODIMP AntennaPin::ReceiveConnection(IPin *, const AM_MEDIA_TYPE *)
{
    return E_UNEXPECTED;
}

CComPtr<IPin> AntennaPin::peer()
{
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    return m_connected;
}

} // namespace lab
