#include "tuner/CrossbarControl.h"

#include <algorithm>
#include <string>

#include "common/DeviceConfig.h"
#include "common/DeviceState.h"

namespace lab {

namespace {

struct ConnectorName {
    const wchar_t *name;
    long type;
};

const ConnectorName kConnectors[] = {
    {L"tuner", PhysConn_Video_Tuner},
    {L"composite", PhysConn_Video_Composite},
    {L"svideo", PhysConn_Video_SVideo},
    {L"tuner-audio", PhysConn_Audio_Tuner},
    {L"line-audio", PhysConn_Audio_Line},
    {L"video-decoder", PhysConn_Video_VideoDecoder},
    {L"audio-decoder", PhysConn_Audio_AudioDecoder},
};

std::vector<long> connectors(DeviceState &device, const wchar_t *key, const wchar_t *fallback)
{
    std::vector<long> types;
    for (const std::wstring &item : DeviceConfig::split(device.text(key, fallback), L',')) {
        std::wstring name = DeviceConfig::lower(DeviceConfig::trim(item));
        for (const ConnectorName &connector : kConnectors) {
            if (name == connector.name)
                types.push_back(connector.type);
        }
    }
    return types;
}

bool isAudio(long type)
{
    return type >= PhysConn_Audio_Tuner;
}

// Video and audio connectors of one source belong together: the tuner's picture and sound,
// a line input's picture and sound, the decoder's two outputs.
int sourceGroup(long type)
{
    switch (type) {
    case PhysConn_Video_Tuner:
    case PhysConn_Audio_Tuner:
        return 1;
    case PhysConn_Video_VideoDecoder:
    case PhysConn_Audio_AudioDecoder:
        return 2;
    default:
        return 3;
    }
}

} // namespace

CrossbarControl::CrossbarControl(IUnknown &owner) : m_owner(owner) {}

void CrossbarControl::attach(const std::shared_ptr<DeviceState> &device)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_device = device;
    m_inputs = connectors(*device, L"crossbar-inputs", L"tuner, composite, tuner-audio, line-audio");
    m_outputs = connectors(*device, L"crossbar-outputs", L"video-decoder, audio-decoder");
    m_routes.assign(m_outputs.size(), -1);
    for (size_t output = 0; output < m_outputs.size(); ++output) {
        auto first = std::find_if(m_inputs.begin(), m_inputs.end(),
                                  [&](long input) { return isAudio(input) == isAudio(m_outputs[output]); });
        if (first != m_inputs.end())
            m_routes[output] = static_cast<long>(first - m_inputs.begin());
    }
}

long CrossbarControl::videoSource()
{
    std::lock_guard<std::mutex> guard(m_lock);
    for (size_t output = 0; output < m_outputs.size(); ++output) {
        if (!isAudio(m_outputs[output]))
            return m_routes[output] < 0 ? static_cast<long>(PhysConn_Video_Black) : m_inputs[m_routes[output]];
    }
    return PhysConn_Video_Black;
}

STDMETHODIMP CrossbarControl::QueryInterface(REFIID iid, void **out)
{
    return m_owner.QueryInterface(iid, out);
}
STDMETHODIMP_(ULONG) CrossbarControl::AddRef()
{
    return m_owner.AddRef();
}
STDMETHODIMP_(ULONG) CrossbarControl::Release()
{
    return m_owner.Release();
}

STDMETHODIMP CrossbarControl::get_PinCounts(LONG *outputs, LONG *inputs)
{
    if (!outputs || !inputs)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    *outputs = static_cast<LONG>(m_outputs.size());
    *inputs = static_cast<LONG>(m_inputs.size());
    return S_OK;
}

HRESULT CrossbarControl::routable(LONG output, LONG input)
{
    if (output < 0 || output >= static_cast<LONG>(m_outputs.size()) || input < 0 ||
        input >= static_cast<LONG>(m_inputs.size()))
        return E_INVALIDARG;
    if (isAudio(m_inputs[input]) != isAudio(m_outputs[output]))
        return S_FALSE;
    std::vector<long long> refused = m_device->integers(L"fault.canroute");
    return std::find(refused.begin(), refused.end(), input) == refused.end() ? S_OK : S_FALSE;
}

STDMETHODIMP CrossbarControl::CanRoute(LONG output, LONG input)
{
    std::lock_guard<std::mutex> guard(m_lock);
    if (!m_device)
        return E_UNEXPECTED;
    return routable(output, input);
}

STDMETHODIMP CrossbarControl::Route(LONG output, LONG input)
{
    std::lock_guard<std::mutex> guard(m_lock);
    if (!m_device)
        return E_UNEXPECTED;
    std::wstring entry = L"Route " + std::to_wstring(output) + L" " + std::to_wstring(input);
    HRESULT hr = routable(output, input);
    if (hr == S_FALSE)
        hr = E_FAIL;
    if (SUCCEEDED(hr))
        hr = m_device->hresult(L"fault.route");
    if (FAILED(hr)) {
        m_device->record(entry + L" failed", hr);
        return hr;
    }
    m_routes[output] = input;
    m_device->record(entry);
    return S_OK;
}

STDMETHODIMP CrossbarControl::get_IsRoutedTo(LONG output, LONG *input)
{
    if (!input)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    if (output < 0 || output >= static_cast<LONG>(m_outputs.size()))
        return E_INVALIDARG;
    *input = m_routes[output];
    return S_OK;
}

STDMETHODIMP CrossbarControl::get_CrossbarPinInfo(BOOL isInput, LONG index, LONG *related, LONG *type)
{
    if (!related || !type)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    const std::vector<long> &pins = isInput ? m_inputs : m_outputs;
    if (index < 0 || index >= static_cast<LONG>(pins.size()))
        return E_INVALIDARG;
    *related = relatedPin(pins, index);
    *type = pins[index];
    return S_OK;
}

long CrossbarControl::relatedPin(const std::vector<long> &pins, long index)
{
    for (size_t other = 0; other < pins.size(); ++other) {
        if (isAudio(pins[other]) != isAudio(pins[index]) && sourceGroup(pins[other]) == sourceGroup(pins[index]))
            return static_cast<long>(other);
    }
    return -1;
}

} // namespace lab
