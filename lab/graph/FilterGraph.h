// The filter graph under CLSID_FilterGraph: Wine's own graph (quartz.dll), aggregated, with
// IMediaControl::Run reporting a filter that failed to start as Windows does. Wine 8 keeps
// going when a live source refuses to run (a device held by another program), so without this
// the caller would see S_FALSE and a graph that never delivers.
#pragma once

#include <windows.h>
#include <dshow.h>

#include <atlbase.h>

#include "common/LabModule.h"

namespace lab {

class FilterGraph final : public IMediaControl, private LiveObject {
public:
    static HRESULT create(REFIID iid, void **out);

    // IUnknown: the controlling unknown of the aggregate.
    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IDispatch, forwarded.
    STDMETHODIMP GetTypeInfoCount(UINT *count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo **info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR *names, UINT count, LCID locale, DISPID *ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS *params, VARIANT *result,
                        EXCEPINFO *exception, UINT *argumentError) override;

    // IMediaControl
    STDMETHODIMP Run() override;
    STDMETHODIMP Pause() override;
    STDMETHODIMP Stop() override;
    STDMETHODIMP GetState(LONG timeout, OAFilterState *state) override;
    STDMETHODIMP RenderFile(BSTR name) override;
    STDMETHODIMP AddSourceFilter(BSTR name, IDispatch **unknown) override;
    STDMETHODIMP get_FilterCollection(IDispatch **unknown) override;
    STDMETHODIMP get_RegFilterCollection(IDispatch **unknown) override;
    STDMETHODIMP StopWhenReady() override;

private:
    FilterGraph() = default;
    ~FilterGraph();
    FilterGraph(const FilterGraph &) = delete;
    FilterGraph &operator=(const FilterGraph &) = delete;

    HRESULT aggregateWineGraph();
    // The error of a filter the graph could not start, or S_OK.
    HRESULT startFailure();
    void stopStartedFilters();

    volatile LONG m_refs = 0;
    HMODULE m_quartz = nullptr;
    CComPtr<IUnknown> m_inner;
    // Obtained from the inner object; its references count on us, so it is held raw.
    IMediaControl *m_control = nullptr;
};

} // namespace lab
