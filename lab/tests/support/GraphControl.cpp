#include "GraphControl.h"

#include <atlbase.h>

namespace labtest {

HRESULT GraphControl::run(IGraphBuilder *graph)
{
    CComQIPtr<IMediaControl> control(graph);
    return control ? control->Run() : E_NOINTERFACE;
}

HRESULT GraphControl::stop(IGraphBuilder *graph)
{
    CComQIPtr<IMediaControl> control(graph);
    return control ? control->Stop() : E_NOINTERFACE;
}

void GraphControl::removeAllFilters(IGraphBuilder *graph)
{
    CComPtr<IEnumFilters> remaining;
    if (FAILED(graph->EnumFilters(&remaining)))
        return;
    for (;;) {
        CComPtr<IBaseFilter> filter;
        if (remaining->Next(1, &filter, nullptr) != S_OK)
            break;
        graph->RemoveFilter(filter);
        remaining->Reset();
    }
}

} // namespace labtest
