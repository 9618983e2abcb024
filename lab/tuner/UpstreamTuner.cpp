#include "tuner/UpstreamTuner.h"

#include <vector>

#include "tuner/TunerClassIds.h"

namespace lab {

namespace {

std::vector<CComPtr<IPin>> pinsOf(IBaseFilter *filter, PIN_DIRECTION direction)
{
    std::vector<CComPtr<IPin>> pins;
    CComPtr<IEnumPins> enumerator;
    if (FAILED(filter->EnumPins(&enumerator)) || !enumerator)
        return pins;
    CComPtr<IPin> pin;
    while (enumerator->Next(1, &pin, nullptr) == S_OK) {
        PIN_DIRECTION pinDirection = PINDIR_INPUT;
        if (SUCCEEDED(pin->QueryDirection(&pinDirection)) && pinDirection == direction)
            pins.push_back(pin);
        pin.Release();
    }
    return pins;
}

bool connected(IPin *pin)
{
    CComPtr<IPin> peer;
    return SUCCEEDED(pin->ConnectedTo(&peer)) && peer;
}

} // namespace

void UpstreamTuner::connectAbove(IGraphBuilder *graph, IBaseFilter *filter)
{
    if (!graph || !filter)
        return;
    for (const CComPtr<IPin> &input : pinsOf(filter, PINDIR_INPUT)) {
        const PinMedium medium = PinMedium::of(input);
        if (medium.present() && !connected(input))
            connectInput(graph, input, medium);
    }
}

void UpstreamTuner::connectInput(IGraphBuilder *graph, IPin *input, const PinMedium &medium)
{
    CComPtr<ICreateDevEnum> devices;
    CComPtr<IEnumMoniker> tuners;
    if (FAILED(devices.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER)) ||
        devices->CreateClassEnumerator(kTvTunerCategory, &tuners, 0) != S_OK || !tuners)
        return;
    CComPtr<IMoniker> moniker;
    while (tuners->Next(1, &moniker, nullptr) == S_OK) {
        CComPtr<IBaseFilter> tuner;
        const CComPtr<IPin> output = SUCCEEDED(moniker->BindToObject(nullptr, nullptr, IID_PPV_ARGS(&tuner)))
                                         ? outputWith(tuner, medium)
                                         : nullptr;
        moniker.Release();
        if (!output || FAILED(graph->AddFilter(tuner, L"TV Tuner")))
            continue;
        if (SUCCEEDED(graph->ConnectDirect(output, input, nullptr)))
            return;
        graph->RemoveFilter(tuner);
    }
}

CComPtr<IPin> UpstreamTuner::outputWith(IBaseFilter *tuner, const PinMedium &medium)
{
    for (const CComPtr<IPin> &output : pinsOf(tuner, PINDIR_OUTPUT)) {
        if (PinMedium::of(output).sameAs(medium) && !connected(output))
            return output;
    }
    return nullptr;
}

} // namespace lab
