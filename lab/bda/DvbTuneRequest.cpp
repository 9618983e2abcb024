#include "bda/DvbTuneRequest.h"

#include <new>

#include "common/LockedRead.h"

namespace lab {

bool DvbTuneRequest::answers(REFIID iid) const
{
    return TuneRequestBase::answers(iid) || IsEqualIID(iid, __uuidof(IDVBTuneRequest));
}

HRESULT DvbTuneRequest::write(long &field, long value)
{
    std::lock_guard<std::mutex> guard(m_lock);
    field = value;
    return S_OK;
}

STDMETHODIMP DvbTuneRequest::get_ONID(LONG *onid) { return readLocked(m_lock, onid, m_onid); }
STDMETHODIMP DvbTuneRequest::put_ONID(LONG onid) { return write(m_onid, onid); }
STDMETHODIMP DvbTuneRequest::get_TSID(LONG *tsid) { return readLocked(m_lock, tsid, m_tsid); }
STDMETHODIMP DvbTuneRequest::put_TSID(LONG tsid) { return write(m_tsid, tsid); }
STDMETHODIMP DvbTuneRequest::get_SID(LONG *sid) { return readLocked(m_lock, sid, m_sid); }
STDMETHODIMP DvbTuneRequest::put_SID(LONG sid) { return write(m_sid, sid); }

STDMETHODIMP DvbTuneRequest::Clone(ITuneRequest **clone)
{
    if (!clone)
        return E_POINTER;
    *clone = nullptr;
    CComPtr<ITuningSpace> space;
    get_TuningSpace(&space);
    DvbTuneRequest *copy = new (std::nothrow) DvbTuneRequest(space);
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IDVBTuneRequest> hold(copy);
    const HRESULT hr = copyBaseTo(*copy);
    if (FAILED(hr))
        return hr;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        copy->m_onid = m_onid;
        copy->m_tsid = m_tsid;
        copy->m_sid = m_sid;
    }
    return hold.QueryInterface(clone);
}

} // namespace lab
