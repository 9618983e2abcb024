// The pin half of every lab filter: IPin's connection state and queries. Reference counts go
// to the owning filter. OutputPin and InputPin add the two directions' connection protocols.
#pragma once

#include <windows.h>
#include <dshow.h>
#include <string>
#include <vector>

#include <atlbase.h>

#include "common/MediaType.h"

namespace lab {

class BaseFilter;

class BasePin : public IPin {
public:
    BasePin(BaseFilter &filter, const std::wstring &name, PIN_DIRECTION direction);
    virtual ~BasePin();
    BasePin(const BasePin &) = delete;
    BasePin &operator=(const BasePin &) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP Disconnect() override;
    STDMETHODIMP ConnectedTo(IPin **pin) override;
    STDMETHODIMP ConnectionMediaType(AM_MEDIA_TYPE *type) override;
    STDMETHODIMP QueryPinInfo(PIN_INFO *info) override;
    STDMETHODIMP QueryDirection(PIN_DIRECTION *direction) override;
    STDMETHODIMP QueryId(LPWSTR *id) override;
    STDMETHODIMP QueryAccept(const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP EnumMediaTypes(IEnumMediaTypes **types) override;
    STDMETHODIMP QueryInternalConnections(IPin **pins, ULONG *count) override;
    STDMETHODIMP EndOfStream() override;
    STDMETHODIMP BeginFlush() override;
    STDMETHODIMP EndFlush() override;
    STDMETHODIMP NewSegment(REFERENCE_TIME start, REFERENCE_TIME stop, double rate) override;

    // The types this pin offers, preferred first.
    virtual std::vector<MediaType> mediaTypes() { return {}; }
    // S_OK when the pin can carry the type.
    virtual HRESULT checkMediaType(const AM_MEDIA_TYPE &type) = 0;

    // The filter leaves or enters Stopped.
    virtual HRESULT active() { return S_OK; }
    virtual void inactive() {}

    const std::wstring &name() const { return m_name; }
    bool isConnected() const { return m_connected != nullptr; }
    const MediaType &connectionType() const { return m_type; }
    BaseFilter &filter() { return m_filter; }

protected:
    // More interfaces on the pin; return the pointer without a reference, or null.
    virtual void *queryExtra(REFIID iid);
    // The connection is made (type set) or broken; a failure in onConnected undoes the connection.
    virtual HRESULT onConnected() { return S_OK; }
    virtual void onDisconnected() {}
    bool filterStopped();
    // S_OK when the pin may take a new connection: unconnected, filter stopped.
    HRESULT canConnect();
    std::vector<MediaType> offeredTypes();
    void setConnection(IPin *peer, const AM_MEDIA_TYPE &type);
    void clearConnection();

    BaseFilter &m_filter;
    const std::wstring m_name;
    const PIN_DIRECTION m_direction;
    CComPtr<IPin> m_connected;
    MediaType m_type;
};

} // namespace lab
