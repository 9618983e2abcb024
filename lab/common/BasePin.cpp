#include "common/BasePin.h"

#include <cstring>
#include <cwchar>

#include "common/BaseFilter.h"
#include "common/EnumMediaTypes.h"

namespace lab {

BasePin::BasePin(BaseFilter &filter, const std::wstring &name, PIN_DIRECTION direction)
    : m_filter(filter), m_name(name), m_direction(direction)
{
}

BasePin::~BasePin() = default;

STDMETHODIMP BasePin::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPin))
        *out = static_cast<IPin *>(this);
    else
        *out = queryExtra(iid);
    if (!*out)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) BasePin::AddRef()
{
    return m_filter.AddRef();
}

STDMETHODIMP_(ULONG) BasePin::Release()
{
    return m_filter.Release();
}

STDMETHODIMP BasePin::Disconnect()
{
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    if (!filterStopped())
        return VFW_E_NOT_STOPPED;
    if (!m_connected)
        return S_FALSE;
    clearConnection();
    return S_OK;
}

STDMETHODIMP BasePin::ConnectedTo(IPin **pin)
{
    if (!pin)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    *pin = nullptr;
    if (!m_connected)
        return VFW_E_NOT_CONNECTED;
    return m_connected.CopyTo(pin);
}

STDMETHODIMP BasePin::ConnectionMediaType(AM_MEDIA_TYPE *type)
{
    if (!type)
        return E_POINTER;
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    if (!m_connected) {
        ZeroMemory(type, sizeof(*type));
        return VFW_E_NOT_CONNECTED;
    }
    return m_type.copyTo(*type);
}

STDMETHODIMP BasePin::QueryPinInfo(PIN_INFO *info)
{
    if (!info)
        return E_POINTER;
    ZeroMemory(info, sizeof(*info));
    info->pFilter = &m_filter;
    m_filter.AddRef();
    info->dir = m_direction;
    wcsncpy(info->achName, m_name.c_str(), MAX_PIN_NAME - 1);
    return S_OK;
}

STDMETHODIMP BasePin::QueryDirection(PIN_DIRECTION *direction)
{
    if (!direction)
        return E_POINTER;
    *direction = m_direction;
    return S_OK;
}

STDMETHODIMP BasePin::QueryId(LPWSTR *id)
{
    if (!id)
        return E_POINTER;
    const size_t bytes = (m_name.size() + 1) * sizeof(wchar_t);
    *id = static_cast<LPWSTR>(CoTaskMemAlloc(bytes));
    if (!*id)
        return E_OUTOFMEMORY;
    std::memcpy(*id, m_name.c_str(), bytes);
    return S_OK;
}

STDMETHODIMP BasePin::QueryAccept(const AM_MEDIA_TYPE *type)
{
    if (!type)
        return E_POINTER;
    return checkMediaType(*type) == S_OK ? S_OK : S_FALSE;
}

STDMETHODIMP BasePin::EnumMediaTypes(IEnumMediaTypes **types)
{
    if (!types)
        return E_POINTER;
    *types = nullptr;
    lab::EnumMediaTypes *enumerator = new (std::nothrow) lab::EnumMediaTypes(this, offeredTypes(), 0);
    if (!enumerator)
        return E_OUTOFMEMORY;
    CComPtr<IEnumMediaTypes> hold(enumerator);
    *types = hold.Detach();
    return S_OK;
}

STDMETHODIMP BasePin::QueryInternalConnections(IPin **, ULONG *)
{
    return E_NOTIMPL;
}

STDMETHODIMP BasePin::EndOfStream()
{
    return S_OK;
}

STDMETHODIMP BasePin::BeginFlush()
{
    return S_OK;
}

STDMETHODIMP BasePin::EndFlush()
{
    return S_OK;
}

STDMETHODIMP BasePin::NewSegment(REFERENCE_TIME, REFERENCE_TIME, double)
{
    return S_OK;
}

void *BasePin::queryExtra(REFIID)
{
    return nullptr;
}

std::vector<MediaType> BasePin::offeredTypes()
{
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    std::vector<MediaType> types = mediaTypes();
    if (!m_connected || m_direction != PINDIR_OUTPUT)
        return types;
    // Connected, the connection's type comes first: pass-through filters downstream (Wine's
    // sample grabber) offer our first type to their own peer, then reconnect us with it.
    std::vector<MediaType> ordered{m_type};
    for (MediaType &type : types) {
        if (!m_type.sameAs(type.get()))
            ordered.push_back(std::move(type));
    }
    return ordered;
}

bool BasePin::filterStopped()
{
    return m_filter.state() == State_Stopped;
}

HRESULT BasePin::canConnect()
{
    if (m_connected)
        return VFW_E_ALREADY_CONNECTED;
    return filterStopped() ? S_OK : VFW_E_NOT_STOPPED;
}

void BasePin::setConnection(IPin *peer, const AM_MEDIA_TYPE &type)
{
    m_connected = peer;
    m_type = MediaType(type);
}

void BasePin::clearConnection()
{
    onDisconnected();
    m_connected.Release();
    m_type.clear();
}

} // namespace lab
