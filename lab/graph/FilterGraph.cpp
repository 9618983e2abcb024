#include "graph/FilterGraph.h"

#include "common/ClassRegistry.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::plain(CLSID_FilterGraph, L"Filter Graph", &FilterGraph::create));

using GetClassObjectFunction = HRESULT(WINAPI *)(REFCLSID, REFIID, void **);

} // namespace

HRESULT FilterGraph::create(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    FilterGraph *graph = new (std::nothrow) FilterGraph();
    if (!graph)
        return E_OUTOFMEMORY;
    CComPtr<IMediaControl> hold(graph);
    const HRESULT hr = graph->aggregateWineGraph();
    if (FAILED(hr))
        return hr;
    return graph->QueryInterface(iid, out);
}

// Creates Wine's graph from quartz.dll itself (the registry now names this DLL), with us as
// the controlling unknown.
HRESULT FilterGraph::aggregateWineGraph()
{
    m_quartz = LoadLibraryW(L"quartz.dll");
    if (!m_quartz)
        return HRESULT_FROM_WIN32(GetLastError());
    const auto getClassObject = reinterpret_cast<GetClassObjectFunction>(
        reinterpret_cast<void (*)()>(GetProcAddress(m_quartz, "DllGetClassObject")));
    if (!getClassObject)
        return HRESULT_FROM_WIN32(GetLastError());
    CComPtr<IClassFactory> factory;
    HRESULT hr = getClassObject(CLSID_FilterGraph, IID_PPV_ARGS(&factory));
    if (SUCCEEDED(hr))
        hr = factory->CreateInstance(static_cast<IMediaControl *>(this), IID_PPV_ARGS(&m_inner));
    if (SUCCEEDED(hr))
        hr = m_inner->QueryInterface(IID_PPV_ARGS(&m_control));
    if (FAILED(hr))
        return hr;
    // The inner interface counted on us; the aggregate does not hold itself.
    Release();
    return S_OK;
}

FilterGraph::~FilterGraph()
{
    // Guard against re-entry while the inner object lets go of the interface it lent us.
    m_refs = 1;
    if (m_control) {
        AddRef();
        m_control->Release();
    }
    m_inner.Release();
    if (m_quartz)
        FreeLibrary(m_quartz);
}

STDMETHODIMP FilterGraph::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IMediaControl) || IsEqualIID(iid, IID_IDispatch)) {
        *out = static_cast<IMediaControl *>(this);
        AddRef();
        return S_OK;
    }
    return m_inner ? m_inner->QueryInterface(iid, out) : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) FilterGraph::AddRef()
{
    return InterlockedIncrement(&m_refs);
}

STDMETHODIMP_(ULONG) FilterGraph::Release()
{
    const LONG refs = InterlockedDecrement(&m_refs);
    if (refs == 0)
        delete this;
    return refs;
}

STDMETHODIMP FilterGraph::GetTypeInfoCount(UINT *count)
{
    return m_control->GetTypeInfoCount(count);
}

STDMETHODIMP FilterGraph::GetTypeInfo(UINT index, LCID locale, ITypeInfo **info)
{
    return m_control->GetTypeInfo(index, locale, info);
}

STDMETHODIMP FilterGraph::GetIDsOfNames(REFIID iid, LPOLESTR *names, UINT count, LCID locale, DISPID *ids)
{
    return m_control->GetIDsOfNames(iid, names, count, locale, ids);
}

STDMETHODIMP FilterGraph::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS *params, VARIANT *result,
                                 EXCEPINFO *exception, UINT *argumentError)
{
    return m_control->Invoke(id, iid, locale, flags, params, result, exception, argumentError);
}

STDMETHODIMP FilterGraph::Run()
{
    const HRESULT hr = m_control->Run();
    if (FAILED(hr)) {
        stopStartedFilters();
        return hr;
    }
    const HRESULT failure = startFailure();
    if (FAILED(failure)) {
        m_control->Stop();
        return failure;
    }
    return hr;
}

// Wine starts every filter and keeps the first result that is not S_OK, which a renderer's
// S_FALSE (still pausing) takes before a source's error. A filter left stopped failed to
// pause; a live source (VFW_S_CANT_CUE) left paused failed to run. Asking it again gives
// its error.
HRESULT FilterGraph::startFailure()
{
    CComQIPtr<IFilterGraph> graph(m_inner.p);
    CComPtr<IEnumFilters> filters;
    if (!graph || FAILED(graph->EnumFilters(&filters)))
        return S_OK;
    for (CComPtr<IBaseFilter> filter; filters->Next(1, &filter, nullptr) == S_OK; filter.Release()) {
        FILTER_STATE state = State_Stopped;
        const HRESULT stateResult = filter->GetState(0, &state);
        HRESULT hr = S_OK;
        if (state == State_Stopped)
            hr = filter->Pause();
        else if (state == State_Paused && stateResult == VFW_S_CANT_CUE)
            hr = filter->Run(0);
        if (FAILED(hr))
            return hr;
    }
    return S_OK;
}

// Wine's graph stays stopped after a Run whose pause failed but leaves the filters it did
// pause as they are, so its Stop skips them and they refuse removal. Windows stops them.
void FilterGraph::stopStartedFilters()
{
    CComQIPtr<IFilterGraph> graph(m_inner.p);
    CComPtr<IEnumFilters> filters;
    if (!graph || FAILED(graph->EnumFilters(&filters)))
        return;
    for (CComPtr<IBaseFilter> filter; filters->Next(1, &filter, nullptr) == S_OK; filter.Release()) {
        FILTER_STATE state = State_Stopped;
        filter->GetState(0, &state);
        if (state != State_Stopped)
            filter->Stop();
    }
}

STDMETHODIMP FilterGraph::Pause()
{
    return m_control->Pause();
}

STDMETHODIMP FilterGraph::Stop()
{
    return m_control->Stop();
}

STDMETHODIMP FilterGraph::GetState(LONG timeout, OAFilterState *state)
{
    return m_control->GetState(timeout, state);
}

STDMETHODIMP FilterGraph::RenderFile(BSTR name)
{
    return m_control->RenderFile(name);
}

STDMETHODIMP FilterGraph::AddSourceFilter(BSTR name, IDispatch **unknown)
{
    return m_control->AddSourceFilter(name, unknown);
}

STDMETHODIMP FilterGraph::get_FilterCollection(IDispatch **unknown)
{
    return m_control->get_FilterCollection(unknown);
}

STDMETHODIMP FilterGraph::get_RegFilterCollection(IDispatch **unknown)
{
    return m_control->get_RegFilterCollection(unknown);
}

STDMETHODIMP FilterGraph::StopWhenReady()
{
    return m_control->StopWhenReady();
}

} // namespace lab
