#include "BdaGraph.h"
#include "GraphControl.h"
#include "WaitFor.h"

#include <bdaiface.h>
#include <uuids.h>

#include "LabGraph.h"
#include "lab/BdaGuids.h"

namespace labtest {

STDMETHODIMP StreamCollector::BufferCB(double, BYTE *buffer, long length)
{
    std::lock_guard<std::mutex> guard(m_lock);
    ++m_calls;
    if (buffer && length > 0)
        m_bytes.insert(m_bytes.end(), buffer, buffer + length);
    return S_OK;
}

std::vector<std::uint8_t> StreamCollector::bytes() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_bytes;
}

size_t StreamCollector::size() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_bytes.size();
}

size_t StreamCollector::calls() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_calls;
}

void StreamCollector::clear()
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_bytes.clear();
    m_calls = 0;
}

BdaGraph::BdaGraph() = default;

BdaGraph::~BdaGraph()
{
    tearDown();
}

HRESULT BdaGraph::addDevices(const std::wstring &tunerName, const std::wstring &receiverName)
{
    HRESULT hr = graph.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr))
        hr = bindDeviceIn(lab::kCategoryBdaNetworkTuner, tunerName, tuner);
    if (SUCCEEDED(hr))
        hr = graph->AddFilter(tuner, tunerName.c_str());
    if (FAILED(hr) || receiverName.empty())
        return hr;
    hr = bindDeviceIn(lab::kCategoryBdaReceiverComponent, receiverName, receiver);
    if (SUCCEEDED(hr))
        hr = graph->AddFilter(receiver, receiverName.c_str());
    if (FAILED(hr))
        return hr;
    CComPtr<IPin> tunerOut;
    tunerOut.Attach(firstPin(tuner, PINDIR_OUTPUT));
    CComPtr<IPin> receiverIn;
    receiverIn.Attach(firstPin(receiver, PINDIR_INPUT));
    return graph->ConnectDirect(tunerOut, receiverIn, nullptr);
}

HRESULT BdaGraph::addGrabber(const std::wstring &tunerName, const std::wstring &receiverName)
{
    HRESULT hr = addDevices(tunerName, receiverName);
    if (SUCCEEDED(hr))
        hr = grabberFilter.CoCreateInstance(CLSID_SampleGrabber, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr))
        hr = graph->AddFilter(grabberFilter, L"SampleGrabber");
    if (SUCCEEDED(hr))
        hr = grabberFilter->QueryInterface(&grabber);
    if (FAILED(hr))
        return hr;
    AM_MEDIA_TYPE wanted = {};
    wanted.majortype = MEDIATYPE_Stream;
    wanted.subtype = MEDIASUBTYPE_MPEG2_TRANSPORT;
    hr = grabber->SetMediaType(&wanted);
    collector = new StreamCollector();
    if (SUCCEEDED(hr))
        hr = grabber->SetCallback(collector, 1);
    if (FAILED(hr))
        return hr;
    CComPtr<IPin> sourceOut;
    sourceOut.Attach(firstPin(streamSource(), PINDIR_OUTPUT));
    CComPtr<IPin> grabberIn;
    grabberIn.Attach(firstPin(grabberFilter, PINDIR_INPUT));
    return graph->Connect(sourceOut, grabberIn);
}

HRESULT BdaGraph::addBehindGrabber(CComPtr<IBaseFilter> &filter, REFCLSID classId, const wchar_t *name,
                                   Connection connection)
{
    HRESULT hr = filter.CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr))
        hr = graph->AddFilter(filter, name);
    if (FAILED(hr))
        return hr;
    CComPtr<IPin> grabberOut;
    grabberOut.Attach(firstPin(grabberFilter, PINDIR_OUTPUT));
    CComPtr<IPin> input;
    input.Attach(firstPin(filter, PINDIR_INPUT));
    return connection == Connection::Direct ? graph->ConnectDirect(grabberOut, input, nullptr)
                                            : graph->Connect(grabberOut, input);
}

HRESULT BdaGraph::buildWithDemux(const std::wstring &tunerName, const std::wstring &receiverName)
{
    HRESULT hr = addGrabber(tunerName, receiverName);
    if (SUCCEEDED(hr))
        hr = grabber->SetBufferSamples(TRUE);
    if (SUCCEEDED(hr))
        hr = addBehindGrabber(demux, CLSID_MPEG2Demultiplexer, L"Demux", Connection::Direct);
    return hr;
}

CComPtr<IPin> BdaGraph::demuxPin(const wchar_t *name)
{
    CComPtr<IPin> pin;
    if (demux)
        demux->FindPin(name, &pin);
    return pin;
}

HRESULT BdaGraph::build(const std::wstring &tunerName, const std::wstring &receiverName)
{
    HRESULT hr = addGrabber(tunerName, receiverName);
    if (SUCCEEDED(hr))
        hr = addBehindGrabber(sink, CLSID_NullRenderer, L"NullRenderer", Connection::Intelligent);
    return hr;
}

HRESULT BdaGraph::tune(ULONG kHz, ModulationType modulation, ULONG bandwidthMHz)
{
    CComQIPtr<IBDA_DeviceControl> control(tuner.p);
    CComQIPtr<IBDA_Topology> topology(tuner.p);
    if (!control || !topology)
        return E_NOINTERFACE;
    HRESULT hr = control->StartChanges();
    ULONG types[32] = {};
    ULONG count = 0;
    if (SUCCEEDED(hr))
        hr = topology->GetNodeTypes(&count, 32, types);
    for (ULONG i = 0; SUCCEEDED(hr) && i < count; ++i) {
        CComPtr<IUnknown> node;
        hr = topology->GetControlNode(0, 1, types[i], &node);
        if (FAILED(hr))
            break;
        CComQIPtr<IBDA_FrequencyFilter> frequency(node.p);
        if (frequency) {
            hr = frequency->put_FrequencyMultiplier(1000);
            if (SUCCEEDED(hr))
                hr = frequency->put_Frequency(kHz);
            if (SUCCEEDED(hr))
                hr = frequency->put_Bandwidth(bandwidthMHz);
        }
        CComQIPtr<IBDA_DigitalDemodulator> demodulator(node.p);
        if (SUCCEEDED(hr) && demodulator)
            hr = demodulator->put_ModulationType(&modulation);
    }
    if (SUCCEEDED(hr))
        hr = control->CheckChanges();
    if (SUCCEEDED(hr))
        hr = control->CommitChanges();
    return hr;
}

HRESULT BdaGraph::run()
{
    return GraphControl::run(graph);
}

HRESULT BdaGraph::stop()
{
    return GraphControl::stop(graph);
}

std::vector<std::uint8_t> BdaGraph::receive(size_t bytes, DWORD patienceMs)
{
    if (!collector)
        return {};
    collector->clear();
    if (FAILED(run()))
        return {};
    waitFor([this, bytes] { return bytes != 0 && collector->size() >= bytes; }, patienceMs);
    stop();
    return collector->bytes();
}

void BdaGraph::tearDown()
{
    if (graph)
        stop();
    if (grabber)
        grabber->SetCallback(nullptr, 1);
    if (graph)
        GraphControl::removeAllFilters(graph);
    collector.Release();
    demux.Release();
    grabber.Release();
    sink.Release();
    grabberFilter.Release();
    receiver.Release();
    tuner.Release();
    graph.Release();
}

} // namespace labtest
