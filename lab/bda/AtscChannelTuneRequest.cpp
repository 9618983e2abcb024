#include "bda/AtscChannelTuneRequest.h"

#include <new>

namespace lab {

STDMETHODIMP AtscChannelTuneRequest::Clone(ITuneRequest **clone)
{
    if (!clone)
        return E_POINTER;
    *clone = nullptr;
    CComPtr<ITuningSpace> space;
    get_TuningSpace(&space);
    AtscChannelTuneRequest *copy = new (std::nothrow) AtscChannelTuneRequest(space);
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IATSCChannelTuneRequest> hold(copy);
    const HRESULT hr = copyChannelsTo(*copy);
    if (FAILED(hr))
        return hr;
    return hold.QueryInterface(clone);
}

} // namespace lab
