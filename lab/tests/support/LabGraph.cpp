#include "LabGraph.h"
#include "GraphControl.h"
#include "WaitFor.h"

#include <oleauto.h>

namespace labtest {

namespace {

std::wstring readProperty(IPropertyBag *bag, const wchar_t *name)
{
    VARIANT value;
    VariantInit(&value);
    std::wstring text;
    if (SUCCEEDED(bag->Read(name, &value, nullptr)) && value.vt == VT_BSTR && value.bstrVal)
        text = value.bstrVal;
    VariantClear(&value);
    return text;
}

} // namespace

std::vector<MonikerInfo> listDevices(const GUID &category)
{
    std::vector<MonikerInfo> devices;
    CComPtr<ICreateDevEnum> enumerator;
    if (FAILED(enumerator.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER)))
        return devices;
    CComPtr<IEnumMoniker> monikers;
    if (enumerator->CreateClassEnumerator(category, &monikers, 0) != S_OK || !monikers)
        return devices;
    for (;;) {
        MonikerInfo info;
        if (monikers->Next(1, &info.moniker, nullptr) != S_OK)
            break;
        CComPtr<IPropertyBag> bag;
        if (SUCCEEDED(info.moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag)))) {
            for (const wchar_t *name : {L"FriendlyName", L"CLSID", L"Description", L"DevicePath"})
                info.values[name] = readProperty(bag, name);
        }
        devices.push_back(info);
    }
    return devices;
}

const MonikerInfo *findDevice(const std::vector<MonikerInfo> &devices, const std::wstring &name)
{
    for (const MonikerInfo &device : devices) {
        const auto found = device.values.find(L"FriendlyName");
        if (found != device.values.end() && found->second == name)
            return &device;
    }
    return nullptr;
}

HRESULT bindDeviceIn(const GUID &category, const std::wstring &name, CComPtr<IBaseFilter> &filter)
{
    filter.Release();
    const std::vector<MonikerInfo> devices = listDevices(category);
    const MonikerInfo *device = findDevice(devices, name);
    if (!device)
        return HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
    return device->moniker->BindToObject(nullptr, nullptr, IID_PPV_ARGS(&filter));
}

HRESULT bindDevice(const std::wstring &name, CComPtr<IBaseFilter> &filter)
{
    return bindDeviceIn(CLSID_VideoInputDeviceCategory, name, filter);
}

IPin *firstPin(IBaseFilter *filter, PIN_DIRECTION direction)
{
    CComPtr<IEnumPins> pins;
    if (FAILED(filter->EnumPins(&pins)))
        return nullptr;
    for (;;) {
        CComPtr<IPin> pin;
        if (pins->Next(1, &pin, nullptr) != S_OK)
            return nullptr;
        PIN_DIRECTION actual = PINDIR_INPUT;
        if (SUCCEEDED(pin->QueryDirection(&actual)) && actual == direction)
            return pin.Detach();
    }
}

LabGraph::LabGraph() = default;

LabGraph::~LabGraph()
{
    tearDown();
}

HRESULT LabGraph::addDevice(const std::wstring &device)
{
    HRESULT hr = graph ? S_OK : graph.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr) && !builder) {
        hr = builder.CoCreateInstance(CLSID_CaptureGraphBuilder2, nullptr, CLSCTX_INPROC_SERVER);
        if (SUCCEEDED(hr))
            hr = builder->SetFiltergraph(graph);
    }
    if (SUCCEEDED(hr))
        hr = bindDevice(device, source);
    if (SUCCEEDED(hr))
        hr = graph->AddFilter(source, L"Video Capture");
    return hr;
}

HRESULT LabGraph::build(const std::wstring &device, const AM_MEDIA_TYPE *capability, const GUID &wantedSubType)
{
    HRESULT hr = addDevice(device);
    if (SUCCEEDED(hr))
        hr = grabberFilter.CoCreateInstance(CLSID_SampleGrabber, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr))
        hr = graph->AddFilter(grabberFilter, L"SampleGrabber");
    if (SUCCEEDED(hr))
        hr = grabberFilter.QueryInterface(&m_grabber);
    if (SUCCEEDED(hr))
        hr = sink.CoCreateInstance(CLSID_NullRenderer, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr))
        hr = graph->AddFilter(sink, L"NullRenderer");
    if (FAILED(hr))
        return hr;

    AM_MEDIA_TYPE wanted = {};
    wanted.majortype = MEDIATYPE_Video;
    wanted.subtype = wantedSubType;
    wanted.formattype = IsEqualGUID(wantedSubType, GUID_NULL) ? GUID_NULL : FORMAT_VideoInfo;
    hr = m_grabber->SetMediaType(capability ? capability : &wanted);
    if (SUCCEEDED(hr))
        hr = m_grabber->SetBufferSamples(FALSE);
    m_collector = new FrameCollector();
    if (SUCCEEDED(hr))
        hr = m_grabber->SetCallback(m_collector, 0);
    if (FAILED(hr))
        return hr;

    if (!capability)
        return builder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, source, grabberFilter, sink);
    CComPtr<IPin> sourceOut;
    sourceOut.Attach(firstPin(source, PINDIR_OUTPUT));
    CComPtr<IPin> grabberIn;
    grabberIn.Attach(firstPin(grabberFilter, PINDIR_INPUT));
    CComPtr<IPin> grabberOut;
    grabberOut.Attach(firstPin(grabberFilter, PINDIR_OUTPUT));
    CComPtr<IPin> sinkIn;
    sinkIn.Attach(firstPin(sink, PINDIR_INPUT));
    hr = graph->ConnectDirect(sourceOut, grabberIn, capability);
    if (SUCCEEDED(hr))
        hr = graph->ConnectDirect(grabberOut, sinkIn, nullptr);
    return hr;
}

HRESULT LabGraph::run()
{
    return GraphControl::run(graph);
}

HRESULT LabGraph::stop()
{
    return GraphControl::stop(graph);
}

HRESULT LabGraph::capture(size_t frames, DWORD timeoutMs)
{
    const HRESULT hr = run();
    if (FAILED(hr))
        return hr;
    waitFor([this, frames] { return m_collector->count() >= frames; }, timeoutMs);
    stop();
    return m_collector->count() >= frames ? S_OK : S_FALSE;
}

void LabGraph::tearDown()
{
    if (graph)
        stop();
    if (m_grabber)
        m_grabber->SetCallback(nullptr, 0);
    if (graph) {
        for (IBaseFilter *filter : {source.p, grabberFilter.p, sink.p}) {
            if (filter)
                graph->RemoveFilter(filter);
        }
        // Filters the builder inserted (decoders, Smart Tee) go with the graph.
        GraphControl::removeAllFilters(graph);
    }
    m_collector.Release();
    m_grabber.Release();
    sink.Release();
    grabberFilter.Release();
    source.Release();
    builder.Release();
    graph.Release();
}

} // namespace labtest
