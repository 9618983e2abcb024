#include "StubBdaPin.h"

#include "StubBdaTuner.h"
#include "lab/BdaGuids.h"

namespace labtest {

namespace {
HRESULT unexpected(const char *call)
{
    return StubBdaTuner::unexpectedCall("the tuner's input pin", call);
}
} // namespace

STDMETHODIMP StubBdaPin::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPin)) {
        *out = static_cast<IPin *>(this);
        AddRef();
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) StubBdaPin::AddRef()
{
    return m_filter.AddRef();
}
STDMETHODIMP_(ULONG) StubBdaPin::Release()
{
    return m_filter.Release();
}

STDMETHODIMP StubBdaPin::Connect(IPin *, const AM_MEDIA_TYPE *)
{
    return unexpected("Connect");
}

STDMETHODIMP StubBdaPin::ReceiveConnection(IPin *connector, const AM_MEDIA_TYPE *type)
{
    if (!connector || !type)
        return E_POINTER;
    if (m_peer)
        return VFW_E_ALREADY_CONNECTED;
    if (!IsEqualGUID(type->majortype, lab::kMediaTypeBdaAntenna))
        return VFW_E_TYPE_NOT_ACCEPTED;
    m_peer = connector;
    return S_OK;
}

STDMETHODIMP StubBdaPin::Disconnect()
{
    if (!m_peer)
        return S_FALSE;
    m_peer.Release();
    return S_OK;
}

STDMETHODIMP StubBdaPin::ConnectedTo(IPin **pin)
{
    if (!pin)
        return E_POINTER;
    *pin = nullptr;
    return m_peer ? m_peer.CopyTo(pin) : VFW_E_NOT_CONNECTED;
}

STDMETHODIMP StubBdaPin::QueryPinInfo(PIN_INFO *info)
{
    if (!info)
        return E_POINTER;
    ZeroMemory(info, sizeof(*info));
    info->pFilter = &m_filter;
    m_filter.AddRef();
    info->dir = PINDIR_INPUT;
    wcscpy(info->achName, L"Input0");
    return S_OK;
}

STDMETHODIMP StubBdaPin::QueryDirection(PIN_DIRECTION *direction)
{
    if (!direction)
        return E_POINTER;
    *direction = PINDIR_INPUT;
    return S_OK;
}

STDMETHODIMP StubBdaPin::ConnectionMediaType(AM_MEDIA_TYPE *)
{
    return unexpected("ConnectionMediaType");
}
STDMETHODIMP StubBdaPin::QueryId(LPWSTR *)
{
    return unexpected("QueryId");
}
STDMETHODIMP StubBdaPin::QueryAccept(const AM_MEDIA_TYPE *)
{
    return unexpected("QueryAccept");
}
STDMETHODIMP StubBdaPin::EnumMediaTypes(IEnumMediaTypes **)
{
    return unexpected("EnumMediaTypes");
}
STDMETHODIMP StubBdaPin::QueryInternalConnections(IPin **, ULONG *)
{
    return unexpected("QueryInternalConnections");
}
STDMETHODIMP StubBdaPin::EndOfStream()
{
    return unexpected("EndOfStream");
}
STDMETHODIMP StubBdaPin::BeginFlush()
{
    return unexpected("BeginFlush");
}
STDMETHODIMP StubBdaPin::EndFlush()
{
    return unexpected("EndFlush");
}
STDMETHODIMP StubBdaPin::NewSegment(REFERENCE_TIME, REFERENCE_TIME, double)
{
    return unexpected("NewSegment");
}

} // namespace labtest
