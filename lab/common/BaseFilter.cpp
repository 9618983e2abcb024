#include "common/BaseFilter.h"

#include <cwchar>

#include "common/BasePin.h"
#include "common/EnumPins.h"

namespace lab {

BaseFilter::BaseFilter(const CLSID &clsid) : m_clsid(clsid) {}

BaseFilter::~BaseFilter() = default;

STDMETHODIMP BaseFilter::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPersist) || IsEqualIID(iid, IID_IMediaFilter) ||
        IsEqualIID(iid, IID_IBaseFilter))
        *out = static_cast<IBaseFilter *>(this);
    else
        *out = queryExtra(iid);
    if (!*out)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) BaseFilter::AddRef()
{
    return InterlockedIncrement(&m_refs);
}

STDMETHODIMP_(ULONG) BaseFilter::Release()
{
    const LONG refs = InterlockedDecrement(&m_refs);
    if (refs == 0)
        delete this;
    return refs;
}

STDMETHODIMP BaseFilter::GetClassID(CLSID *clsid)
{
    if (!clsid)
        return E_POINTER;
    *clsid = m_clsid;
    return S_OK;
}

STDMETHODIMP BaseFilter::Stop()
{
    {
        std::lock_guard<std::recursive_mutex> guard(m_lock);
        if (m_state == State_Stopped)
            return S_OK;
        m_state = State_Stopped;
        // Decommitted allocators release a streaming thread waiting for a buffer.
        deactivatePins();
    }
    // Outside the lock: onStop may wait for a streaming thread, which may be inside a
    // downstream filter that calls back into our pins.
    onStop();
    return S_OK;
}

STDMETHODIMP BaseFilter::Pause()
{
    std::lock_guard<std::recursive_mutex> guard(m_lock);
    if (m_state == State_Paused)
        return S_OK;
    const bool fromStopped = m_state == State_Stopped;
    if (fromStopped) {
        const HRESULT hr = activatePins();
        if (FAILED(hr))
            return hr;
    }
    const HRESULT hr = onPause(fromStopped);
    if (FAILED(hr)) {
        if (fromStopped)
            deactivatePins();
        return hr;
    }
    m_state = State_Paused;
    return S_OK;
}

STDMETHODIMP BaseFilter::Run(REFERENCE_TIME start)
{
    std::lock_guard<std::recursive_mutex> guard(m_lock);
    if (m_state == State_Running)
        return S_OK;
    if (m_state == State_Stopped) {
        const HRESULT hr = Pause();
        if (FAILED(hr))
            return hr;
    }
    {
        std::lock_guard<std::mutex> info(m_infoLock);
        m_start = start;
    }
    const HRESULT hr = onRun(start);
    if (FAILED(hr))
        return hr;
    m_state = State_Running;
    return S_OK;
}

STDMETHODIMP BaseFilter::GetState(DWORD, FILTER_STATE *state)
{
    if (!state)
        return E_POINTER;
    *state = m_state;
    return *state == State_Paused && isLiveSource() ? VFW_S_CANT_CUE : S_OK;
}

STDMETHODIMP BaseFilter::SetSyncSource(IReferenceClock *clock)
{
    std::lock_guard<std::mutex> guard(m_infoLock);
    m_clock = clock;
    return S_OK;
}

STDMETHODIMP BaseFilter::GetSyncSource(IReferenceClock **clock)
{
    if (!clock)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_infoLock);
    return m_clock.CopyTo(clock);
}

STDMETHODIMP BaseFilter::EnumPins(IEnumPins **pins)
{
    if (!pins)
        return E_POINTER;
    *pins = nullptr;
    lab::EnumPins *enumerator = new (std::nothrow) lab::EnumPins(*this, 0);
    if (!enumerator)
        return E_OUTOFMEMORY;
    CComPtr<IEnumPins> hold(enumerator);
    *pins = hold.Detach();
    return S_OK;
}

STDMETHODIMP BaseFilter::FindPin(LPCWSTR id, IPin **found)
{
    if (!id || !found)
        return E_POINTER;
    *found = nullptr;
    for (int i = 0; i < pinCount(); ++i) {
        BasePin *candidate = pin(i);
        if (candidate && candidate->name() == id) {
            *found = candidate;
            candidate->AddRef();
            return S_OK;
        }
    }
    return VFW_E_NOT_FOUND;
}

STDMETHODIMP BaseFilter::QueryFilterInfo(FILTER_INFO *info)
{
    if (!info)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_infoLock);
    ZeroMemory(info, sizeof(*info));
    wcsncpy(info->achName, m_name.c_str(), MAX_FILTER_NAME - 1);
    info->pGraph = m_graph;
    if (m_graph)
        m_graph->AddRef();
    return S_OK;
}

STDMETHODIMP BaseFilter::JoinFilterGraph(IFilterGraph *graph, LPCWSTR name)
{
    std::lock_guard<std::mutex> guard(m_infoLock);
    m_graph = graph;
    m_name = name ? name : L"";
    return S_OK;
}

STDMETHODIMP BaseFilter::QueryVendorInfo(LPWSTR *info)
{
    if (info)
        *info = nullptr;
    return E_NOTIMPL;
}

FILTER_STATE BaseFilter::state()
{
    return m_state;
}

bool BaseFilter::streamTime(REFERENCE_TIME &now)
{
    CComPtr<IReferenceClock> clock;
    REFERENCE_TIME start = 0;
    {
        std::lock_guard<std::mutex> guard(m_infoLock);
        clock = m_clock;
        start = m_start;
    }
    REFERENCE_TIME time = 0;
    if (!clock || FAILED(clock->GetTime(&time)))
        return false;
    now = time - start;
    return true;
}

void BaseFilter::notifyEvent(long code, LONG_PTR param1, LONG_PTR param2)
{
    CComQIPtr<IMediaEventSink> sink;
    {
        std::lock_guard<std::mutex> guard(m_infoLock);
        sink = m_graph;
    }
    if (sink)
        sink->Notify(code, param1, param2);
}

void *BaseFilter::queryExtra(REFIID)
{
    return nullptr;
}

HRESULT BaseFilter::onPause(bool)
{
    return S_OK;
}

HRESULT BaseFilter::onRun(REFERENCE_TIME)
{
    return S_OK;
}

void BaseFilter::onStop() {}

HRESULT BaseFilter::activatePins()
{
    for (int i = 0; i < pinCount(); ++i) {
        const HRESULT hr = pin(i)->active();
        if (FAILED(hr)) {
            for (int j = 0; j < i; ++j)
                pin(j)->inactive();
            return hr;
        }
    }
    return S_OK;
}

void BaseFilter::deactivatePins()
{
    for (int i = 0; i < pinCount(); ++i)
        pin(i)->inactive();
}

} // namespace lab
