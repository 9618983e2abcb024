// A BDA graph built by hand as an application would: a lab tuner (and receiver) bound from
// their monikers, tuned through IBDA_DeviceControl / IBDA_Topology as a network provider does,
// the transport stream through Wine's sample grabber (buffer callback) into a null renderer, or
// on into an MPEG-2 demultiplexer.
#pragma once

#include <windows.h>
#include <dshow.h>
#include <qedit.h>
#include <bdatypes.h>

#include "GrabberCallback.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include <atlbase.h>

namespace labtest {

// Keeps every byte the sample grabber's buffer callback sees.
class StreamCollector : public GrabberCallback {
public:
    STDMETHODIMP SampleCB(double, IMediaSample *) override { return E_NOTIMPL; }
    STDMETHODIMP BufferCB(double time, BYTE *buffer, long length) override;

    std::vector<std::uint8_t> bytes() const;
    size_t size() const;
    size_t calls() const;
    void clear();

private:
    mutable std::mutex m_lock;
    std::vector<std::uint8_t> m_bytes;
    size_t m_calls = 0;
};

class BdaGraph {
public:
    BdaGraph();
    ~BdaGraph();
    BdaGraph(const BdaGraph &) = delete;
    BdaGraph &operator=(const BdaGraph &) = delete;

    // Tuner, receiver (none for a tuner that streams itself) and the tuner-to-receiver link.
    HRESULT addDevices(const std::wstring &tuner, const std::wstring &receiver);
    // addDevices, then the stream through a sample grabber into a null renderer.
    HRESULT build(const std::wstring &tuner, const std::wstring &receiver);
    // addDevices, then the stream through a buffering sample grabber into the MPEG-2
    // demultiplexer (CLSID_MPEG2Demultiplexer).
    HRESULT buildWithDemux(const std::wstring &tuner, const std::wstring &receiver);
    // The demultiplexer's output pin of that name ("Video", "Audio", "Sections").
    CComPtr<IPin> demuxPin(const wchar_t *name);
    // As a network provider tunes: StartChanges, every node's frequency filter and demodulator,
    // CheckChanges, CommitChanges; the first failure.
    HRESULT tune(ULONG kHz, ModulationType modulation, ULONG bandwidthMHz = static_cast<ULONG>(-1));
    HRESULT run();
    HRESULT stop();
    // Runs until the grabber saw `bytes` bytes (or gave up after `patienceMs`), stops, and
    // returns what it saw; bytes 0 runs for the whole patience (to see that nothing comes).
    std::vector<std::uint8_t> receive(size_t bytes, DWORD patienceMs = 20000);
    // The filter whose output carries the stream.
    IBaseFilter *streamSource() const { return receiver ? receiver.p : tuner.p; }
    void tearDown();

    CComPtr<IGraphBuilder> graph;
    CComPtr<IBaseFilter> tuner;
    CComPtr<IBaseFilter> receiver;
    CComPtr<IBaseFilter> grabberFilter;
    CComPtr<ISampleGrabber> grabber;
    CComPtr<IBaseFilter> sink;
    CComPtr<IBaseFilter> demux;
    CComPtr<StreamCollector> collector;

private:
    // addDevices, then the stream into a sample grabber (buffer callback to the collector).
    HRESULT addGrabber(const std::wstring &tuner, const std::wstring &receiver);
    // Adds a new filter of `classId` and connects the grabber's output to its input: directly,
    // or letting the graph insert what it needs.
    enum class Connection { Direct, Intelligent };
    HRESULT addBehindGrabber(CComPtr<IBaseFilter> &filter, REFCLSID classId, const wchar_t *name,
                             Connection connection);
};

} // namespace labtest
