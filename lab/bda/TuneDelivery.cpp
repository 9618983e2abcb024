#include "bda/TuneDelivery.h"

#include <bdaiface.h>

#include <atlbase.h>

namespace lab {

namespace {
const ULONG kMaxNodeTypes = 32;
const ULONG kKilohertz = 1000;
} // namespace

HRESULT TuneDelivery::deliver(IPin *tunerInput, const TuneParameters &tuning)
{
    if (!tunerInput)
        return VFW_E_NOT_CONNECTED;
    PIN_INFO info = {};
    HRESULT hr = tunerInput->QueryPinInfo(&info);
    if (FAILED(hr))
        return hr;
    CComPtr<IBaseFilter> filter;
    filter.Attach(info.pFilter);
    CComQIPtr<IBDA_DeviceControl> control(filter);
    if (!control)
        return E_NOINTERFACE;
    // The topology is asked for inside the change set, where a device may keep it.
    hr = control->StartChanges();
    if (FAILED(hr))
        return hr;
    CComQIPtr<IBDA_Topology> topology(filter);
    hr = topology ? tuneNodes(topology, tuning) : E_NOINTERFACE;
    if (SUCCEEDED(hr))
        hr = control->CheckChanges();
    if (SUCCEEDED(hr))
        hr = control->CommitChanges();
    return hr;
}

HRESULT TuneDelivery::tuneNodes(IUnknown *filter, const TuneParameters &tuning)
{
    CComQIPtr<IBDA_Topology> topology(filter);
    ULONG count = 0;
    ULONG types[kMaxNodeTypes] = {};
    HRESULT hr = topology->GetNodeTypes(&count, kMaxNodeTypes, types);
    if (FAILED(hr))
        return hr;
    for (ULONG i = 0; i < count && i < kMaxNodeTypes; ++i) {
        CComPtr<IUnknown> node;
        hr = topology->GetControlNode(0, 1, types[i], &node);
        if (FAILED(hr))
            return hr;
        hr = tuneNode(node, tuning);
        if (FAILED(hr))
            return hr;
    }
    return S_OK;
}

HRESULT TuneDelivery::tuneNode(IUnknown *node, const TuneParameters &tuning)
{
    HRESULT hr = S_OK;
    CComQIPtr<IBDA_FrequencyFilter> frequency(node);
    if (frequency) {
        hr = frequency->put_FrequencyMultiplier(kKilohertz);
        if (SUCCEEDED(hr))
            hr = frequency->put_Frequency(static_cast<ULONG>(tuning.frequencyKhz));
        if (SUCCEEDED(hr))
            hr = frequency->put_Bandwidth(static_cast<ULONG>(tuning.bandwidthMhz));
        if (FAILED(hr))
            return hr;
    }
    CComQIPtr<IBDA_DigitalDemodulator> demodulator(node);
    if (demodulator) {
        ModulationType modulation = tuning.modulation;
        hr = demodulator->put_ModulationType(&modulation);
    }
    return hr;
}

} // namespace lab
