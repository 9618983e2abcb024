#include "StubBdaTuner.h"

#include <gtest/gtest.h>

namespace labtest {

namespace {
HRESULT unexpected(const char *call)
{
    return StubBdaTuner::unexpectedCall("the tuner filter", call);
}
const ULONG kTunerNodeType = 0;
const ULONG kDemodulatorNodeType = 1;
} // namespace

HRESULT StubBdaTuner::unexpectedCall(const char *part, const char *call)
{
    ADD_FAILURE() << "unexpected call of " << part << ": " << call;
    return E_UNEXPECTED;
}

StubBdaTuner::StubBdaTuner() : m_pin(*this), m_tunerNode(*this, false), m_demodulatorNode(*this, true) {}

void StubBdaTuner::failOn(const std::wstring &call, HRESULT hr)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_failures.emplace_back(call, hr);
}

HRESULT StubBdaTuner::failure(const std::wstring &call)
{
    std::lock_guard<std::mutex> guard(m_lock);
    for (const auto &entry : m_failures) {
        if (entry.first == call)
            return entry.second;
    }
    return S_OK;
}

void StubBdaTuner::record(const std::wstring &call)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_calls.push_back(call);
}

std::vector<std::wstring> StubBdaTuner::calls()
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_calls;
}

void StubBdaTuner::clearCalls()
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_calls.clear();
}

HRESULT StubBdaTuner::expected(const std::wstring &call)
{
    record(call);
    return failure(call);
}

STDMETHODIMP StubBdaTuner::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IBaseFilter) || IsEqualIID(iid, IID_IMediaFilter) ||
        IsEqualIID(iid, IID_IPersist))
        *out = static_cast<IBaseFilter *>(this);
    else if (IsEqualIID(iid, __uuidof(IBDA_Topology)))
        *out = static_cast<IBDA_Topology *>(this);
    else if (IsEqualIID(iid, __uuidof(IBDA_DeviceControl)))
        *out = static_cast<IBDA_DeviceControl *>(this);
    if (!*out)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) StubBdaTuner::AddRef()
{
    return InterlockedIncrement(&m_refs);
}

STDMETHODIMP_(ULONG) StubBdaTuner::Release()
{
    const LONG refs = InterlockedDecrement(&m_refs);
    if (refs == 0)
        delete this;
    return refs;
}

STDMETHODIMP StubBdaTuner::GetNodeTypes(ULONG *count, ULONG maximum, ULONG types[])
{
    const HRESULT hr = expected(L"GetNodeTypes");
    if (FAILED(hr))
        return hr;
    if (!count || !types || maximum < 2)
        return E_INVALIDARG;
    types[0] = kTunerNodeType;
    types[1] = kDemodulatorNodeType;
    *count = 2;
    return S_OK;
}

STDMETHODIMP StubBdaTuner::GetControlNode(ULONG input, ULONG output, ULONG type, IUnknown **node)
{
    const HRESULT hr = expected(L"GetControlNode " + std::to_wstring(input) + L" " + std::to_wstring(output) + L" " +
                                std::to_wstring(type));
    if (FAILED(hr))
        return hr;
    if (!node)
        return E_POINTER;
    if (type == kTunerNodeType)
        *node = static_cast<IBDA_FrequencyFilter *>(&m_tunerNode);
    else if (type == kDemodulatorNodeType)
        *node = static_cast<IBDA_DigitalDemodulator *>(&m_demodulatorNode);
    else
        return E_INVALIDARG;
    (*node)->AddRef();
    return S_OK;
}

STDMETHODIMP StubBdaTuner::StartChanges()
{
    return expected(L"StartChanges");
}
STDMETHODIMP StubBdaTuner::CheckChanges()
{
    return expected(L"CheckChanges");
}
STDMETHODIMP StubBdaTuner::CommitChanges()
{
    return expected(L"CommitChanges");
}

STDMETHODIMP StubBdaTuner::GetClassID(CLSID *clsid)
{
    if (!clsid)
        return E_POINTER;
    *clsid = GUID_NULL;
    return S_OK;
}

STDMETHODIMP StubBdaTuner::Stop()
{
    return S_OK;
}
STDMETHODIMP StubBdaTuner::Pause()
{
    return S_OK;
}
STDMETHODIMP StubBdaTuner::Run(REFERENCE_TIME)
{
    return S_OK;
}
STDMETHODIMP StubBdaTuner::GetState(DWORD, FILTER_STATE *)
{
    return unexpected("GetState");
}
STDMETHODIMP StubBdaTuner::SetSyncSource(IReferenceClock *)
{
    return S_OK;
}
STDMETHODIMP StubBdaTuner::GetSyncSource(IReferenceClock **)
{
    return unexpected("GetSyncSource");
}
STDMETHODIMP StubBdaTuner::EnumPins(IEnumPins **)
{
    return unexpected("EnumPins");
}
STDMETHODIMP StubBdaTuner::FindPin(LPCWSTR, IPin **)
{
    return unexpected("FindPin");
}
STDMETHODIMP StubBdaTuner::QueryFilterInfo(FILTER_INFO *)
{
    return unexpected("QueryFilterInfo");
}
STDMETHODIMP StubBdaTuner::JoinFilterGraph(IFilterGraph *, LPCWSTR)
{
    return unexpected("JoinFilterGraph");
}
STDMETHODIMP StubBdaTuner::QueryVendorInfo(LPWSTR *)
{
    return unexpected("QueryVendorInfo");
}
STDMETHODIMP StubBdaTuner::GetNodeDescriptors(ULONG *, ULONG, BDANODE_DESCRIPTOR[])
{
    return unexpected("GetNodeDescriptors");
}
STDMETHODIMP StubBdaTuner::GetNodeInterfaces(ULONG, ULONG *, ULONG, GUID[])
{
    return unexpected("GetNodeInterfaces");
}
STDMETHODIMP StubBdaTuner::GetPinTypes(ULONG *, ULONG, ULONG[])
{
    return unexpected("GetPinTypes");
}
STDMETHODIMP StubBdaTuner::GetTemplateConnections(ULONG *, ULONG, BDA_TEMPLATE_CONNECTION[])
{
    return unexpected("GetTemplateConnections");
}
STDMETHODIMP StubBdaTuner::CreatePin(ULONG, ULONG *)
{
    return unexpected("CreatePin");
}
STDMETHODIMP StubBdaTuner::DeletePin(ULONG)
{
    return unexpected("DeletePin");
}
STDMETHODIMP StubBdaTuner::SetMediaType(ULONG, AM_MEDIA_TYPE *)
{
    return unexpected("SetMediaType");
}
STDMETHODIMP StubBdaTuner::SetMedium(ULONG, REGPINMEDIUM *)
{
    return unexpected("SetMedium");
}
STDMETHODIMP StubBdaTuner::CreateTopology(ULONG, ULONG)
{
    return unexpected("CreateTopology");
}
STDMETHODIMP StubBdaTuner::GetChangeState(ULONG *)
{
    return unexpected("GetChangeState");
}

} // namespace labtest
