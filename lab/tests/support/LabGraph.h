// Builds the graphs lab tests need around the simulated devices: find and bind a device by its
// friendly name, wire it into Wine's sample grabber and null renderer, run until enough frames.
#pragma once

#include <windows.h>
#include <dshow.h>
#include <qedit.h>

#include <map>
#include <string>
#include <vector>

#include <atlbase.h>

#include "FrameCollector.h"

// In strmiids, but not declared by mingw-w64's qedit.h.
EXTERN_C const CLSID CLSID_SampleGrabber;
EXTERN_C const CLSID CLSID_NullRenderer;

namespace labtest {

// A moniker of a device category with the property-bag values the tests look at.
struct MonikerInfo {
    CComPtr<IMoniker> moniker;
    std::map<std::wstring, std::wstring> values; // FriendlyName, CLSID, Description, DevicePath
};

std::vector<MonikerInfo> listDevices(const GUID &category);
// The moniker of that friendly name in the list, or null.
const MonikerInfo *findDevice(const std::vector<MonikerInfo> &devices, const std::wstring &name);
// Binds the device of that friendly name in the category; the HRESULT of the bind, or
// ERROR_NOT_FOUND.
HRESULT bindDeviceIn(const GUID &category, const std::wstring &name, CComPtr<IBaseFilter> &filter);
// bindDeviceIn for a video-input device.
HRESULT bindDevice(const std::wstring &name, CComPtr<IBaseFilter> &filter);
IPin *firstPin(IBaseFilter *filter, PIN_DIRECTION direction);

class LabGraph {
public:
    LabGraph();
    ~LabGraph();
    LabGraph(const LabGraph &) = delete;
    LabGraph &operator=(const LabGraph &) = delete;

    // Creates the graph and its capture graph builder on first use, binds the device and adds
    // it as "Video Capture" (into `source`).
    HRESULT addDevice(const std::wstring &device);
    // Adds the device and a grabber asking for `wanted` (major type Video when empty) with a
    // null renderer behind it. Direct connection with the capability's type when given;
    // otherwise the capture graph builder's RenderStream (which inserts decoders).
    HRESULT build(const std::wstring &device, const AM_MEDIA_TYPE *capability, const GUID &wantedSubType);
    HRESULT run();
    HRESULT stop();
    // Runs until `frames` samples arrived or the time-out passed; stops the graph.
    HRESULT capture(size_t frames, DWORD timeoutMs);
    // Drops every filter and the graph; afterwards no lab object should remain.
    void tearDown();

    std::vector<CollectedSample> samples() const
    {
        return m_collector ? m_collector->samples() : std::vector<CollectedSample>();
    }
    HRESULT connectedType(AM_MEDIA_TYPE &type) { return m_grabber->GetConnectedMediaType(&type); }

    CComPtr<IGraphBuilder> graph;
    CComPtr<ICaptureGraphBuilder2> builder;
    CComPtr<IBaseFilter> source;
    CComPtr<IBaseFilter> grabberFilter;
    CComPtr<IBaseFilter> sink;

private:
    CComPtr<ISampleGrabber> m_grabber;
    CComPtr<FrameCollector> m_collector;
};

} // namespace labtest
