#include "bda/AtscTuningSpace.h"

#include <new>

#include "bda/AtscChannelTuneRequest.h"
#include "bda/TuningSpaceCatalog.h"

namespace lab {

STDMETHODIMP AtscTuningSpace::CreateTuneRequest(ITuneRequest **request)
{
    if (!request)
        return E_POINTER;
    *request = nullptr;
    const HRESULT allowed = TuningSpaceCatalog::admitTuneRequest(fields().uniqueName);
    if (FAILED(allowed))
        return allowed;
    AtscChannelTuneRequest *created = new (std::nothrow) AtscChannelTuneRequest(this);
    if (!created)
        return E_OUTOFMEMORY;
    CComPtr<IATSCChannelTuneRequest> hold(created);
    return hold.QueryInterface(request);
}

STDMETHODIMP AtscTuningSpace::Clone(ITuningSpace **clone)
{
    if (!clone)
        return E_POINTER;
    *clone = nullptr;
    TuningSpaceFields copied;
    const HRESULT hr = cloneFields(copied);
    if (FAILED(hr))
        return hr;
    AtscTuningSpace *copy = new (std::nothrow) AtscTuningSpace(copied, ranges());
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IATSCTuningSpace> hold(copy);
    return hold.QueryInterface(clone);
}

} // namespace lab
