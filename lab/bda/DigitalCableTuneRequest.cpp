#include "bda/DigitalCableTuneRequest.h"

#include <new>

namespace lab {

bool DigitalCableTuneRequest::answers(REFIID iid) const
{
    return AtscChannelTuneRequestBase::answers(iid) || IsEqualIID(iid, __uuidof(IDigitalCableTuneRequest));
}

STDMETHODIMP DigitalCableTuneRequest::Clone(ITuneRequest **clone)
{
    if (!clone)
        return E_POINTER;
    *clone = nullptr;
    CComPtr<ITuningSpace> space;
    get_TuningSpace(&space);
    DigitalCableTuneRequest *copy = new (std::nothrow) DigitalCableTuneRequest(space);
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IDigitalCableTuneRequest> hold(copy);
    HRESULT hr = copyChannelsTo(*copy);
    if (FAILED(hr))
        return hr;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        copy->m_majorChannel = m_majorChannel;
        copy->m_sourceId = m_sourceId;
    }
    return hold.QueryInterface(clone);
}

} // namespace lab
