#include "common/InputPin.h"

#include "common/BaseFilter.h"

namespace lab {

InputPin::InputPin(BaseFilter &filter, const std::wstring &name) : BasePin(filter, name, PINDIR_INPUT) {}

STDMETHODIMP InputPin::Connect(IPin *, const AM_MEDIA_TYPE *)
{
    return E_UNEXPECTED;
}

STDMETHODIMP InputPin::ReceiveConnection(IPin *connector, const AM_MEDIA_TYPE *type)
{
    if (!connector || !type)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    const HRESULT allowed = canConnect();
    if (FAILED(allowed))
        return allowed;
    PIN_DIRECTION direction = PINDIR_INPUT;
    if (FAILED(connector->QueryDirection(&direction)) || direction != PINDIR_OUTPUT)
        return VFW_E_INVALID_DIRECTION;
    if (checkMediaType(*type) != S_OK)
        return VFW_E_TYPE_NOT_ACCEPTED;
    setConnection(connector, *type);
    const HRESULT hr = onConnected();
    if (FAILED(hr))
        clearConnection();
    return hr;
}

STDMETHODIMP InputPin::BeginFlush()
{
    m_flushing = true;
    return S_OK;
}

STDMETHODIMP InputPin::EndFlush()
{
    m_flushing = false;
    return S_OK;
}

STDMETHODIMP InputPin::GetAllocator(IMemAllocator **allocator)
{
    if (!allocator)
        return E_POINTER;
    *allocator = nullptr;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    if (!m_allocator) {
        const HRESULT hr = m_allocator.CoCreateInstance(CLSID_MemoryAllocator, nullptr, CLSCTX_INPROC_SERVER);
        if (FAILED(hr))
            return hr;
    }
    return m_allocator.CopyTo(allocator);
}

STDMETHODIMP InputPin::NotifyAllocator(IMemAllocator *allocator, BOOL)
{
    if (!allocator)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    m_allocator = allocator;
    return S_OK;
}

STDMETHODIMP InputPin::GetAllocatorRequirements(ALLOCATOR_PROPERTIES *)
{
    return E_NOTIMPL;
}

STDMETHODIMP InputPin::Receive(IMediaSample *sample)
{
    if (!sample)
        return E_POINTER;
    if (filterStopped())
        return VFW_E_WRONG_STATE;
    if (m_flushing)
        return S_FALSE;
    return receive(sample);
}

STDMETHODIMP InputPin::ReceiveMultiple(IMediaSample **samples, long count, long *processed)
{
    if (!samples || !processed)
        return E_POINTER;
    *processed = 0;
    HRESULT hr = S_OK;
    while (*processed < count && hr == S_OK) {
        hr = Receive(samples[*processed]);
        if (hr == S_OK)
            ++*processed;
    }
    return hr;
}

STDMETHODIMP InputPin::ReceiveCanBlock()
{
    return S_OK;
}

void *InputPin::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IMemInputPin))
        return static_cast<IMemInputPin *>(this);
    return nullptr;
}

void InputPin::onDisconnected()
{
    m_allocator.Release();
}

} // namespace lab
