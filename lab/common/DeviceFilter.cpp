#include "common/DeviceFilter.h"

#include "common/DeviceRegistry.h"
#include "common/StreamingPin.h"

namespace lab {

DeviceFilter::DeviceFilter(const CLSID &clsid) : BaseFilter(clsid), m_device(DeviceRegistry::device(L"")) {}

void *DeviceFilter::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IPersistPropertyBag))
        return static_cast<IPersistPropertyBag *>(this);
    return nullptr;
}

STDMETHODIMP DeviceFilter::InitNew()
{
    return S_OK;
}

STDMETHODIMP DeviceFilter::Load(IPropertyBag *bag, IErrorLog *)
{
    if (!bag)
        return E_POINTER;
    const DeviceConfig config = DeviceConfig::fromPropertyBag(bag);
    std::wstring name;
    config.find(L"FriendlyName", name);
    const std::shared_ptr<DeviceState> device = DeviceRegistry::device(name);
    device->setConfig(config);
    const HRESULT refused = device->hresult(L"fault.bind");
    if (FAILED(refused)) {
        device->record(L"Bind failed", refused);
        return refused;
    }
    return useDevice(device);
}

STDMETHODIMP DeviceFilter::JoinFilterGraph(IFilterGraph *graph, LPCWSTR name)
{
    std::shared_ptr<DeviceState> device;
    {
        std::lock_guard<std::recursive_mutex> guard(lock());
        device = m_device;
        if (!graph && m_leaveRefused)
            device.reset();
        else if (!graph)
            m_leaveRefused = FAILED(device->hresult(L"fault.leave"));
    }
    if (device) {
        const HRESULT refused = device->hresult(graph ? L"fault.join" : L"fault.leave");
        if (FAILED(refused)) {
            device->record(graph ? L"Join failed" : L"Leave failed", refused);
            return refused;
        }
    }
    return BaseFilter::JoinFilterGraph(graph, name);
}

STDMETHODIMP DeviceFilter::Save(IPropertyBag *, BOOL, BOOL)
{
    return E_NOTIMPL;
}

// Running to Paused only stops the deliveries: the graph pauses the renderers first, and a
// paused renderer holds the sample it was given until it runs or stops, so joining a streaming
// thread here could wait for ever. The threads end in onStop, after the renderers let go.
HRESULT DeviceFilter::onPause(bool fromStopped)
{
    if (!fromStopped) {
        for (StreamingPin *pin : streamingPins())
            pin->pauseStreaming();
    }
    m_device->record(L"Pause");
    return S_OK;
}

// A device held elsewhere refuses to run. The refusal comes from Run, not Pause: the graph
// reports a source's Run failure to IMediaControl::Run, while a Pause failure of the source can
// hide behind a renderer still completing its own pause.
HRESULT DeviceFilter::onRun(REFERENCE_TIME)
{
    const HRESULT refused = m_device->hresult(L"fault.run");
    if (FAILED(refused)) {
        m_device->record(L"Run failed", refused);
        return refused;
    }
    m_device->record(L"Run");
    for (StreamingPin *pin : streamingPins())
        pin->startStreaming();
    return S_OK;
}

void DeviceFilter::onStop()
{
    for (StreamingPin *pin : streamingPins())
        pin->stopStreaming();
    m_device->record(L"Stop");
}

HRESULT DeviceFilter::useDevice(const std::shared_ptr<DeviceState> &device)
{
    std::lock_guard<std::recursive_mutex> guard(lock());
    const HRESULT hr = configure(device);
    if (SUCCEEDED(hr))
        m_device = device;
    return hr;
}

} // namespace lab
