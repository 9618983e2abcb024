#include "recording/CaptureGraphBuilder.h"

#include <new>

#include "common/ClassRegistry.h"
#include "tuner/UpstreamTuner.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::plain(CLSID_CaptureGraphBuilder2, L"Capture Graph Builder 2",
                                                      &CaptureGraphBuilder::create));

using GetClassObject = HRESULT(WINAPI *)(REFCLSID, REFIID, void **);

} // namespace

HRESULT CaptureGraphBuilder::create(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    CaptureGraphBuilder *builder = new (std::nothrow) CaptureGraphBuilder();
    if (!builder)
        return E_OUTOFMEMORY;
    CComPtr<ICaptureGraphBuilder2> hold(builder);
    HRESULT hr = builder->loadWineBuilder();
    if (FAILED(hr))
        return hr;
    return hold->QueryInterface(iid, out);
}

CaptureGraphBuilder::CaptureGraphBuilder() = default;

CaptureGraphBuilder::~CaptureGraphBuilder()
{
    // Wine's builder lives in qcap.dll: release it before letting the library go.
    m_wine.Release();
    if (m_qcap)
        FreeLibrary(m_qcap);
}

HRESULT CaptureGraphBuilder::loadWineBuilder()
{
    m_qcap = LoadLibraryW(L"qcap.dll");
    if (!m_qcap)
        return HRESULT_FROM_WIN32(GetLastError());
    GetClassObject getClassObject =
        reinterpret_cast<GetClassObject>(reinterpret_cast<void *>(GetProcAddress(m_qcap, "DllGetClassObject")));
    if (!getClassObject)
        return HRESULT_FROM_WIN32(GetLastError());
    CComPtr<IClassFactory> factory;
    HRESULT hr = getClassObject(CLSID_CaptureGraphBuilder2, IID_PPV_ARGS(&factory));
    if (FAILED(hr))
        return hr;
    return factory->CreateInstance(nullptr, IID_PPV_ARGS(&m_wine));
}

STDMETHODIMP CaptureGraphBuilder::SetFiltergraph(IGraphBuilder *graph)
{
    return m_wine->SetFiltergraph(graph);
}

STDMETHODIMP CaptureGraphBuilder::GetFiltergraph(IGraphBuilder **graph)
{
    return m_wine->GetFiltergraph(graph);
}

STDMETHODIMP CaptureGraphBuilder::SetOutputFileName(const GUID *type, LPCOLESTR file, IBaseFilter **mux,
                                                    IFileSinkFilter **sink)
{
    if (!type || !file || !mux)
        return E_POINTER;
    *mux = nullptr;
    if (sink)
        *sink = nullptr;
    // The Windows Media ASF writer is no part of the lab.
    if (IsEqualGUID(*type, MEDIASUBTYPE_Asf))
        return E_NOTIMPL;

    CComPtr<IGraphBuilder> graph;
    HRESULT hr = outputGraph(graph);
    if (FAILED(hr))
        return hr;
    const bool avi = IsEqualGUID(*type, MEDIASUBTYPE_Avi) != FALSE;
    CComPtr<IBaseFilter> muxFilter;
    hr = muxFilter.CoCreateInstance(avi ? CLSID_AviDest : *type, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        return hr;
    hr = graph->AddFilter(muxFilter, avi ? L"AVI Mux" : L"Mux");
    if (FAILED(hr))
        return hr;

    // A multiplexer that writes its own file is its own sink.
    CComPtr<IFileSinkFilter> fileSink;
    CComQIPtr<IFileSinkFilter> ownSink(muxFilter);
    if (ownSink) {
        hr = ownSink->SetFileName(file, nullptr);
        fileSink = ownSink;
    } else {
        hr = addWriterBehind(graph, muxFilter, file, fileSink);
    }
    if (FAILED(hr)) {
        graph->RemoveFilter(muxFilter);
        return hr;
    }
    *mux = muxFilter.Detach();
    if (sink)
        *sink = fileSink.Detach();
    return S_OK;
}

HRESULT CaptureGraphBuilder::outputGraph(CComPtr<IGraphBuilder> &graph)
{
    if (SUCCEEDED(m_wine->GetFiltergraph(&graph)) && graph)
        return S_OK;
    graph.Release();
    HRESULT hr = graph.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr))
        hr = m_wine->SetFiltergraph(graph);
    return hr;
}

HRESULT CaptureGraphBuilder::addWriterBehind(IGraphBuilder *graph, IBaseFilter *mux, LPCOLESTR file,
                                             CComPtr<IFileSinkFilter> &sink)
{
    CComPtr<IBaseFilter> writer;
    HRESULT hr = writer.CoCreateInstance(CLSID_FileWriter, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        return hr;
    CComQIPtr<IFileSinkFilter> writerSink(writer);
    if (!writerSink)
        return E_NOINTERFACE;
    hr = writerSink->SetFileName(file, nullptr);
    if (FAILED(hr))
        return hr;
    hr = graph->AddFilter(writer, L"File Writer");
    if (FAILED(hr))
        return hr;

    CComPtr<IPin> muxOut;
    CComPtr<IPin> writerIn;
    hr = m_wine->FindPin(mux, PINDIR_OUTPUT, nullptr, nullptr, TRUE, 0, &muxOut);
    if (SUCCEEDED(hr))
        hr = m_wine->FindPin(writer, PINDIR_INPUT, nullptr, nullptr, TRUE, 0, &writerIn);
    if (SUCCEEDED(hr))
        hr = graph->ConnectDirect(muxOut, writerIn, nullptr);
    if (FAILED(hr)) {
        graph->RemoveFilter(writer);
        return hr;
    }
    sink = writerSink;
    return S_OK;
}

STDMETHODIMP CaptureGraphBuilder::FindInterface(const GUID *category, const GUID *majorType, IBaseFilter *filter,
                                                REFIID iid, void **out)
{
    // Windows connects the card's separate tuner above the capture filter before it searches.
    CComPtr<IGraphBuilder> graph;
    if (filter && !(category && IsEqualGUID(*category, LOOK_DOWNSTREAM_ONLY)) &&
        SUCCEEDED(m_wine->GetFiltergraph(&graph)))
        UpstreamTuner::connectAbove(graph, filter);
    return m_wine->FindInterface(category, majorType, filter, iid, out);
}

STDMETHODIMP CaptureGraphBuilder::RenderStream(const GUID *category, const GUID *majorType, IUnknown *source,
                                               IBaseFilter *intermediate, IBaseFilter *sink)
{
    return m_wine->RenderStream(category, majorType, source, intermediate, sink);
}

STDMETHODIMP CaptureGraphBuilder::ControlStream(const GUID *category, const GUID *majorType, IBaseFilter *filter,
                                                REFERENCE_TIME *start, REFERENCE_TIME *stop, WORD startCookie,
                                                WORD stopCookie)
{
    return m_wine->ControlStream(category, majorType, filter, start, stop, startCookie, stopCookie);
}

STDMETHODIMP CaptureGraphBuilder::AllocCapFile(LPCOLESTR file, DWORDLONG size)
{
    return m_wine->AllocCapFile(file, size);
}

STDMETHODIMP CaptureGraphBuilder::CopyCaptureFile(LPOLESTR oldFile, LPOLESTR newFile, int allowEscAbort,
                                                  IAMCopyCaptureFileProgress *callback)
{
    return m_wine->CopyCaptureFile(oldFile, newFile, allowEscAbort, callback);
}

STDMETHODIMP CaptureGraphBuilder::FindPin(IUnknown *source, PIN_DIRECTION direction, const GUID *category,
                                          const GUID *majorType, BOOL unconnected, int index, IPin **pin)
{
    return m_wine->FindPin(source, direction, category, majorType, unconnected, index, pin);
}

} // namespace lab
