#include "common/OutputPin.h"

#include "common/BaseFilter.h"

namespace lab {

namespace {

// A partial type from Connect matches when every non-null GUID agrees.
bool matchesPartial(const AM_MEDIA_TYPE &type, const AM_MEDIA_TYPE *partial)
{
    if (!partial)
        return true;
    const auto agrees = [](const GUID &wanted, const GUID &actual) {
        return IsEqualGUID(wanted, GUID_NULL) || IsEqualGUID(wanted, actual);
    };
    return agrees(partial->majortype, type.majortype) && agrees(partial->subtype, type.subtype) &&
           agrees(partial->formattype, type.formattype);
}

bool isComplete(const AM_MEDIA_TYPE &type)
{
    return !IsEqualGUID(type.majortype, GUID_NULL) && !IsEqualGUID(type.subtype, GUID_NULL) &&
           !IsEqualGUID(type.formattype, GUID_NULL);
}

class TypeList {
public:
    explicit TypeList(IPin *pin)
    {
        if (FAILED(pin->EnumMediaTypes(&m_enum)) || !m_enum)
            m_enum.Release();
    }
    // Next type, or false at the end; the caller frees it with MediaType::deleteType.
    bool next(AM_MEDIA_TYPE *&type)
    {
        ULONG fetched = 0;
        return m_enum && m_enum->Next(1, &type, &fetched) == S_OK && fetched == 1;
    }

private:
    CComPtr<IEnumMediaTypes> m_enum;
};

} // namespace

OutputPin::OutputPin(BaseFilter &filter, const std::wstring &name, const GUID &category)
    : BasePin(filter, name, PINDIR_OUTPUT), m_category(category)
{
}

void *OutputPin::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IKsPropertySet) && !IsEqualGUID(m_category, GUID_NULL))
        return static_cast<IKsPropertySet *>(this);
    return nullptr;
}

STDMETHODIMP OutputPin::Set(REFGUID set, DWORD, LPVOID, DWORD, LPVOID, DWORD)
{
    return IsEqualGUID(set, AMPROPSETID_Pin) ? E_PROP_ID_UNSUPPORTED : E_PROP_SET_UNSUPPORTED;
}

STDMETHODIMP OutputPin::Get(REFGUID set, DWORD id, LPVOID, DWORD, LPVOID data, DWORD dataSize, DWORD *returned)
{
    if (!IsEqualGUID(set, AMPROPSETID_Pin))
        return E_PROP_SET_UNSUPPORTED;
    if (id != AMPROPERTY_PIN_CATEGORY)
        return E_PROP_ID_UNSUPPORTED;
    if (!data)
        return E_POINTER;
    if (dataSize < sizeof(GUID))
        return E_UNEXPECTED;
    *static_cast<GUID *>(data) = m_category;
    if (returned)
        *returned = sizeof(GUID);
    return S_OK;
}

STDMETHODIMP OutputPin::QuerySupported(REFGUID set, DWORD id, DWORD *support)
{
    if (!IsEqualGUID(set, AMPROPSETID_Pin))
        return E_PROP_SET_UNSUPPORTED;
    if (id != AMPROPERTY_PIN_CATEGORY)
        return E_PROP_ID_UNSUPPORTED;
    if (support)
        *support = KSPROPERTY_SUPPORT_GET;
    return S_OK;
}

STDMETHODIMP OutputPin::Connect(IPin *receiver, const AM_MEDIA_TYPE *type)
{
    if (!receiver)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    const HRESULT allowed = canConnect();
    if (FAILED(allowed))
        return allowed;
    if (type && isComplete(*type))
        return tryConnect(receiver, *type);

    for (const MediaType &own : mediaTypes()) {
        if (matchesPartial(own.get(), type) && SUCCEEDED(tryConnect(receiver, own.get())))
            return S_OK;
    }
    TypeList theirs(receiver);
    AM_MEDIA_TYPE *offered = nullptr;
    while (theirs.next(offered)) {
        const MediaType candidate(*offered);
        MediaType::deleteType(offered);
        if (matchesPartial(candidate.get(), type) && SUCCEEDED(tryConnect(receiver, candidate.get())))
            return S_OK;
    }
    return VFW_E_NO_ACCEPTABLE_TYPES;
}

STDMETHODIMP OutputPin::ReceiveConnection(IPin *, const AM_MEDIA_TYPE *)
{
    return E_UNEXPECTED;
}

HRESULT OutputPin::tryConnect(IPin *receiver, const AM_MEDIA_TYPE &type)
{
    if (checkMediaType(type) != S_OK)
        return VFW_E_TYPE_NOT_ACCEPTED;
    setConnection(receiver, type);
    HRESULT hr = receiver->ReceiveConnection(this, &type);
    if (SUCCEEDED(hr)) {
        hr = decideAllocator();
        if (SUCCEEDED(hr))
            hr = onConnected();
        if (SUCCEEDED(hr))
            return S_OK;
        receiver->Disconnect();
    }
    clearConnection();
    return hr;
}

HRESULT OutputPin::decideAllocator()
{
    CComQIPtr<IMemInputPin> input(m_connected.p);
    if (!input)
        return E_NOINTERFACE;
    ALLOCATOR_PROPERTIES wanted = {};
    input->GetAllocatorRequirements(&wanted);

    CComPtr<IMemAllocator> allocator;
    if (SUCCEEDED(input->GetAllocator(&allocator)) && allocator && SUCCEEDED(setupAllocator(allocator, wanted)) &&
        SUCCEEDED(input->NotifyAllocator(allocator, FALSE))) {
        m_input = input;
        m_allocator = allocator;
        return S_OK;
    }
    allocator.Release();
    HRESULT hr = allocator.CoCreateInstance(CLSID_MemoryAllocator, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr))
        hr = setupAllocator(allocator, wanted);
    if (SUCCEEDED(hr))
        hr = input->NotifyAllocator(allocator, FALSE);
    if (FAILED(hr))
        return hr;
    m_input = input;
    m_allocator = allocator;
    return S_OK;
}

HRESULT OutputPin::setupAllocator(IMemAllocator *allocator, const ALLOCATOR_PROPERTIES &wanted)
{
    ALLOCATOR_PROPERTIES request = wanted;
    request.cBuffers = request.cBuffers > bufferCount() ? request.cBuffers : bufferCount();
    request.cbBuffer = request.cbBuffer > bufferSize() ? request.cbBuffer : bufferSize();
    if (request.cbAlign < 1)
        request.cbAlign = 1;
    ALLOCATOR_PROPERTIES actual = {};
    const HRESULT hr = allocator->SetProperties(&request, &actual);
    if (FAILED(hr))
        return hr;
    return actual.cbBuffer < bufferSize() ? E_FAIL : S_OK;
}

long OutputPin::bufferSize()
{
    if (m_type->lSampleSize > 0)
        return static_cast<long>(m_type->lSampleSize);
    const VIDEOINFOHEADER *info = m_type.videoInfo();
    return info && info->bmiHeader.biSizeImage > 0 ? static_cast<long>(info->bmiHeader.biSizeImage) : 1 << 20;
}

void OutputPin::onDisconnected()
{
    m_input.Release();
    m_allocator.Release();
}

HRESULT OutputPin::active()
{
    return m_allocator ? m_allocator->Commit() : S_OK;
}

void OutputPin::inactive()
{
    if (m_allocator)
        m_allocator->Decommit();
}

HRESULT OutputPin::getBuffer(CComPtr<IMediaSample> &sample, BYTE *&data)
{
    sample.Release();
    data = nullptr;
    if (!m_allocator)
        return VFW_E_NO_ALLOCATOR;
    const HRESULT hr = m_allocator->GetBuffer(&sample, nullptr, nullptr, 0);
    return FAILED(hr) ? hr : sample->GetPointer(&data);
}

HRESULT OutputPin::deliver(IMediaSample *sample)
{
    if (!m_input)
        return VFW_E_NOT_CONNECTED;
    return m_input->Receive(sample);
}

HRESULT OutputPin::deliverEndOfStream()
{
    return m_connected ? m_connected->EndOfStream() : VFW_E_NOT_CONNECTED;
}

HRESULT OutputPin::deliverBeginFlush()
{
    return m_connected ? m_connected->BeginFlush() : VFW_E_NOT_CONNECTED;
}

HRESULT OutputPin::deliverEndFlush()
{
    return m_connected ? m_connected->EndFlush() : VFW_E_NOT_CONNECTED;
}

} // namespace lab
