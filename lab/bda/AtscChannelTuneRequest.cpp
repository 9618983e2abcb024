#include "bda/AtscChannelTuneRequest.h"

#include <new>

#include "common/LockedRead.h"

namespace lab {

bool AtscChannelTuneRequest::answers(REFIID iid) const
{
    return TuneRequestBase::answers(iid) || IsEqualIID(iid, __uuidof(IChannelTuneRequest)) ||
           IsEqualIID(iid, __uuidof(IATSCChannelTuneRequest));
}

STDMETHODIMP AtscChannelTuneRequest::get_Channel(LONG *channel) { return readLocked(m_lock, channel, m_channel); }

STDMETHODIMP AtscChannelTuneRequest::put_Channel(LONG channel)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_channel = channel;
    return S_OK;
}

STDMETHODIMP AtscChannelTuneRequest::get_MinorChannel(LONG *minorChannel)
{
    return readLocked(m_lock, minorChannel, m_minorChannel);
}

STDMETHODIMP AtscChannelTuneRequest::put_MinorChannel(LONG minorChannel)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_minorChannel = minorChannel;
    return S_OK;
}

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
    const HRESULT hr = copyBaseTo(*copy);
    if (FAILED(hr))
        return hr;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        copy->m_channel = m_channel;
        copy->m_minorChannel = m_minorChannel;
    }
    return hold.QueryInterface(clone);
}

} // namespace lab
