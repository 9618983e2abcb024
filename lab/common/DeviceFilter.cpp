#include "common/DeviceFilter.h"

#include "common/DeviceRegistry.h"

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

HRESULT DeviceFilter::useDevice(const std::shared_ptr<DeviceState> &device)
{
    std::lock_guard<std::recursive_mutex> guard(lock());
    const HRESULT hr = configure(device);
    if (SUCCEEDED(hr))
        m_device = device;
    return hr;
}

} // namespace lab
