#include "bda/DvbTuneRequest.h"

#include <new>

#include "bda/TuningSpaceCatalog.h"
#include "common/DeviceState.h"

namespace lab {

bool DvbTuneRequest::answers(REFIID iid) const
{
    if (IsEqualIID(iid, __uuidof(IDVBTuneRequest)))
        return !TuningSpaceCatalog::device()->flag(L"fault.IDVBTuneRequest");
    return TuneRequestBase::answers(iid);
}

STDMETHODIMP DvbTuneRequest::put_Locator(ILocator *locator)
{
    const HRESULT fault = TuningSpaceCatalog::device()->hresult(L"fault.put_Locator");
    return FAILED(fault) ? fault : TuneRequestBase::put_Locator(locator);
}

STDMETHODIMP DvbTuneRequest::get_ONID(LONG *onid)
{
    return read(onid, m_onid);
}
STDMETHODIMP DvbTuneRequest::put_ONID(LONG onid)
{
    return write(m_onid, onid);
}
STDMETHODIMP DvbTuneRequest::get_TSID(LONG *tsid)
{
    return read(tsid, m_tsid);
}
STDMETHODIMP DvbTuneRequest::put_TSID(LONG tsid)
{
    return write(m_tsid, tsid);
}
STDMETHODIMP DvbTuneRequest::get_SID(LONG *sid)
{
    return read(sid, m_sid);
}
STDMETHODIMP DvbTuneRequest::put_SID(LONG sid)
{
    return write(m_sid, sid);
}

ITuneRequest *DvbTuneRequest::newCopy(ITuningSpace *space)
{
    std::lock_guard<std::mutex> guard(m_lock);
    DvbTuneRequest *copy = new (std::nothrow) DvbTuneRequest(space);
    if (copy) {
        copy->m_onid = m_onid;
        copy->m_tsid = m_tsid;
        copy->m_sid = m_sid;
    }
    return copy;
}

} // namespace lab
