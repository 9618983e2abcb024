#include "bda/DigitalCableTuningSpace.h"

#include <new>

#include "bda/DigitalCableTuneRequest.h"
#include "bda/TuningSpaceCatalog.h"

namespace lab {

bool DigitalCableTuningSpace::answers(REFIID iid) const
{
    return AtscTuningSpaceBase::answers(iid) || IsEqualIID(iid, __uuidof(IDigitalCableTuningSpace));
}

STDMETHODIMP DigitalCableTuningSpace::CreateTuneRequest(ITuneRequest **request)
{
    if (!request)
        return E_POINTER;
    *request = nullptr;
    const HRESULT allowed = TuningSpaceCatalog::admitTuneRequest(fields().uniqueName);
    if (FAILED(allowed))
        return allowed;
    DigitalCableTuneRequest *created = new (std::nothrow) DigitalCableTuneRequest(this);
    if (!created)
        return E_OUTOFMEMORY;
    CComPtr<IDigitalCableTuneRequest> hold(created);
    return hold.QueryInterface(request);
}

STDMETHODIMP DigitalCableTuningSpace::Clone(ITuningSpace **clone)
{
    if (!clone)
        return E_POINTER;
    *clone = nullptr;
    TuningSpaceFields copied;
    const HRESULT hr = cloneFields(copied);
    if (FAILED(hr))
        return hr;
    CableChannelRanges cable;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        cable = m_cable;
    }
    DigitalCableTuningSpace *copy = new (std::nothrow) DigitalCableTuningSpace(copied, ranges(), cable);
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IDigitalCableTuningSpace> hold(copy);
    return hold.QueryInterface(clone);
}

} // namespace lab
