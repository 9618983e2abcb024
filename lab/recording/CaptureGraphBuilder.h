// The capture graph builder as Windows has it, registered under CLSID_CaptureGraphBuilder2. Wine's
// builder (created from qcap.dll directly, past the registry) does all the graph work;
// this one adds what Wine leaves out: SetOutputFileName (the multiplexer and the file writer,
// both added to the graph and connected, as Windows hands them back) and, before FindInterface
// searches, the separate TV tuner filter of a card connected above its capture filter.
#pragma once

#include <windows.h>
#include <dshow.h>

#include <atlbase.h>

#include "common/ComObject.h"
#include "common/LabModule.h"

namespace lab {

class CaptureGraphBuilder final : public ComObject<ICaptureGraphBuilder2>, private LiveObject {
public:
    static HRESULT create(REFIID iid, void **out);

    STDMETHODIMP SetFiltergraph(IGraphBuilder *graph) override;
    STDMETHODIMP GetFiltergraph(IGraphBuilder **graph) override;
    STDMETHODIMP SetOutputFileName(const GUID *type, LPCOLESTR file, IBaseFilter **mux,
                                   IFileSinkFilter **sink) override;
    STDMETHODIMP FindInterface(const GUID *category, const GUID *majorType, IBaseFilter *filter, REFIID iid,
                               void **out) override;
    STDMETHODIMP RenderStream(const GUID *category, const GUID *majorType, IUnknown *source, IBaseFilter *intermediate,
                              IBaseFilter *sink) override;
    STDMETHODIMP ControlStream(const GUID *category, const GUID *majorType, IBaseFilter *filter, REFERENCE_TIME *start,
                               REFERENCE_TIME *stop, WORD startCookie, WORD stopCookie) override;
    STDMETHODIMP AllocCapFile(LPCOLESTR file, DWORDLONG size) override;
    STDMETHODIMP CopyCaptureFile(LPOLESTR oldFile, LPOLESTR newFile, int allowEscAbort,
                                 IAMCopyCaptureFileProgress *callback) override;
    STDMETHODIMP FindPin(IUnknown *source, PIN_DIRECTION direction, const GUID *category, const GUID *majorType,
                         BOOL unconnected, int index, IPin **pin) override;

private:
    CaptureGraphBuilder();
    ~CaptureGraphBuilder() override;

    HRESULT loadWineBuilder();
    // The graph set by SetFiltergraph; like Windows, one is made when none was set.
    HRESULT outputGraph(CComPtr<IGraphBuilder> &graph);
    HRESULT addWriterBehind(IGraphBuilder *graph, IBaseFilter *mux, LPCOLESTR file, CComPtr<IFileSinkFilter> &sink);

    HMODULE m_qcap = nullptr;
    CComPtr<ICaptureGraphBuilder2> m_wine;
};

} // namespace lab
