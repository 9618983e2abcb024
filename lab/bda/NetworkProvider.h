// The BDA network providers, under the class IDs Windows gives them: the generic network
// provider (CLSID_NetworkProvider), the ATSC (CLSID_ATSCNetworkProvider) and the DVB-T
// (CLSID_DVBTNetworkProvider) network provider. One output pin, "Antenna Out", connects
// directly to a BDA tuner filter's input; ITuner (TunerControl) takes tune requests and hands
// them to that tuner filter; the DVB-T provider also has IFrequencyMap (FrequencyMapControl).
// All three journal under the device name "Network Provider" (see TunerControl and
// FrequencyMapControl for the entries and faults). fault.join = HRESULT: JoinFilterGraph refuses
// every graph, so adding the provider to one fails (journal: "Join failed 0x<HRESULT>").
#pragma once

#include "bda/AntennaPin.h"
#include "bda/FrequencyMapControl.h"
#include "bda/ProviderKind.h"
#include "bda/TunerControl.h"
#include "common/BaseFilter.h"

namespace lab {

class NetworkProvider final : public BaseFilter {
public:
    static const wchar_t kDeviceName[];

    NetworkProvider(const CLSID &clsid, ProviderKind kind);

    static HRESULT createGeneric(REFIID iid, void **out);
    static HRESULT createAtsc(REFIID iid, void **out);
    static HRESULT createDvbt(REFIID iid, void **out);

    int pinCount() override { return 1; }
    BasePin *pin(int index) override;

    STDMETHODIMP JoinFilterGraph(IFilterGraph *graph, LPCWSTR name) override;

protected:
    void *queryExtra(REFIID iid) override;
    HRESULT onPause(bool fromStopped) override;

private:
    static HRESULT create(const CLSID &clsid, ProviderKind kind, REFIID iid, void **out);

    const ProviderKind m_kind;
    AntennaPin m_antenna;
    TunerControl m_tuner;
    FrequencyMapControl m_frequencyMap;
};

} // namespace lab
