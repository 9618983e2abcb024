#include "bdadevice/BdaControlNode.h"

#include <new>
#include <utility>

namespace lab {

BdaControlNode::BdaControlNode(IUnknown *owner, BdaTuning &tuning, std::shared_ptr<DeviceState> device, ULONG nodeType,
                               bool statistics)
    : m_owner(owner), m_tuning(tuning), m_device(std::move(device)), m_nodeType(nodeType), m_statistics(statistics)
{
}

HRESULT BdaControlNode::create(IUnknown *owner, BdaTuning &tuning, std::shared_ptr<DeviceState> device, ULONG nodeType,
                               bool statistics, IUnknown **node)
{
    if (!node)
        return E_POINTER;
    *node = nullptr;
    BdaControlNode *created = new (std::nothrow) BdaControlNode(owner, tuning, std::move(device), nodeType, statistics);
    if (!created)
        return E_OUTOFMEMORY;
    CComPtr<IBDA_SignalStatistics> hold(created);
    return hold->QueryInterface(IID_PPV_ARGS(node));
}

STDMETHODIMP BdaControlNode::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown))
        *out = static_cast<IBDA_SignalStatistics *>(this);
    else if (IsEqualIID(iid, __uuidof(IBDA_FrequencyFilter)) && m_nodeType == kTunerNode)
        *out = static_cast<IBDA_FrequencyFilter *>(this);
    else if (IsEqualIID(iid, __uuidof(IBDA_DigitalDemodulator)) && m_nodeType == kDemodulatorNode)
        *out = static_cast<IBDA_DigitalDemodulator *>(this);
    else if (IsEqualIID(iid, __uuidof(IBDA_SignalStatistics)) && m_statistics)
        *out = static_cast<IBDA_SignalStatistics *>(this);
    if (!*out)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) BdaControlNode::AddRef()
{
    return InterlockedIncrement(&m_refs);
}

STDMETHODIMP_(ULONG) BdaControlNode::Release()
{
    const LONG refs = InterlockedDecrement(&m_refs);
    if (refs == 0)
        delete this;
    return refs;
}

STDMETHODIMP BdaControlNode::put_Frequency(ULONG frequency)
{
    m_tuning.setFrequency(frequency);
    return S_OK;
}

STDMETHODIMP BdaControlNode::get_Frequency(ULONG *frequency)
{
    if (!frequency)
        return E_POINTER;
    *frequency = m_tuning.frequency();
    return S_OK;
}

STDMETHODIMP BdaControlNode::put_Bandwidth(ULONG bandwidth)
{
    m_tuning.setBandwidth(bandwidth);
    return S_OK;
}

STDMETHODIMP BdaControlNode::get_Bandwidth(ULONG *bandwidth)
{
    if (!bandwidth)
        return E_POINTER;
    *bandwidth = m_tuning.bandwidth();
    return S_OK;
}

STDMETHODIMP BdaControlNode::put_FrequencyMultiplier(ULONG multiplier)
{
    if (multiplier == 0)
        return E_INVALIDARG;
    m_tuning.setMultiplier(multiplier);
    return S_OK;
}

STDMETHODIMP BdaControlNode::get_FrequencyMultiplier(ULONG *multiplier)
{
    if (!multiplier)
        return E_POINTER;
    *multiplier = m_tuning.multiplier();
    return S_OK;
}

STDMETHODIMP BdaControlNode::put_ModulationType(ModulationType *modulation)
{
    if (!modulation)
        return E_POINTER;
    m_tuning.setModulation(*modulation);
    return S_OK;
}

STDMETHODIMP BdaControlNode::get_ModulationType(ModulationType *modulation)
{
    if (!modulation)
        return E_POINTER;
    *modulation = m_tuning.modulation();
    return S_OK;
}

} // namespace lab
