// A control node of a simulated BDA tuner, as IBDA_Topology::GetControlNode hands it out:
// node type 0 is the RF tuner (IBDA_FrequencyFilter), node type 1 the demodulator
// (IBDA_DigitalDemodulator); both carry IBDA_SignalStatistics when the device keeps its
// statistics on the nodes. A node holds its filter alive and sets the filter's pending tuning.
#pragma once

#include <windows.h>
#include <bdaiface.h>
#include <memory>

#include <atlbase.h>

#include "bdadevice/TunedSignalStatistics.h"
#include "common/LabModule.h"

namespace lab {

class DeviceState;

class BdaControlNode : public IBDA_FrequencyFilter,
                       public IBDA_DigitalDemodulator,
                       public TunedSignalStatistics,
                       private LiveObject {
public:
    static const ULONG kTunerNode = 0;
    static const ULONG kDemodulatorNode = 1;

    // A new node of that type for the owning filter (kept alive by the node), as IUnknown.
    static HRESULT create(IUnknown *owner, BdaTuning &tuning, std::shared_ptr<DeviceState> device, ULONG nodeType,
                          bool statistics, IUnknown **node);

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IBDA_FrequencyFilter
    STDMETHODIMP put_Autotune(ULONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_Autotune(ULONG *) override { return E_NOTIMPL; }
    STDMETHODIMP put_Frequency(ULONG frequency) override;
    STDMETHODIMP get_Frequency(ULONG *frequency) override;
    STDMETHODIMP put_Polarity(Polarisation) override { return E_NOTIMPL; }
    STDMETHODIMP get_Polarity(Polarisation *) override { return E_NOTIMPL; }
    STDMETHODIMP put_Range(ULONG) override { return E_NOTIMPL; }
    STDMETHODIMP get_Range(ULONG *) override { return E_NOTIMPL; }
    STDMETHODIMP put_Bandwidth(ULONG bandwidth) override;
    STDMETHODIMP get_Bandwidth(ULONG *bandwidth) override;
    STDMETHODIMP put_FrequencyMultiplier(ULONG multiplier) override;
    STDMETHODIMP get_FrequencyMultiplier(ULONG *multiplier) override;

    // IBDA_DigitalDemodulator
    STDMETHODIMP put_ModulationType(ModulationType *modulation) override;
    STDMETHODIMP get_ModulationType(ModulationType *modulation) override;
    STDMETHODIMP put_InnerFECMethod(FECMethod *) override { return E_NOTIMPL; }
    STDMETHODIMP get_InnerFECMethod(FECMethod *) override { return E_NOTIMPL; }
    STDMETHODIMP put_InnerFECRate(BinaryConvolutionCodeRate *) override { return E_NOTIMPL; }
    STDMETHODIMP get_InnerFECRate(BinaryConvolutionCodeRate *) override { return E_NOTIMPL; }
    STDMETHODIMP put_OuterFECMethod(FECMethod *) override { return E_NOTIMPL; }
    STDMETHODIMP get_OuterFECMethod(FECMethod *) override { return E_NOTIMPL; }
    STDMETHODIMP put_OuterFECRate(BinaryConvolutionCodeRate *) override { return E_NOTIMPL; }
    STDMETHODIMP get_OuterFECRate(BinaryConvolutionCodeRate *) override { return E_NOTIMPL; }
    STDMETHODIMP put_SymbolRate(ULONG *) override { return E_NOTIMPL; }
    STDMETHODIMP get_SymbolRate(ULONG *) override { return E_NOTIMPL; }
    STDMETHODIMP put_SpectralInversion(SpectralInversion *) override { return E_NOTIMPL; }
    STDMETHODIMP get_SpectralInversion(SpectralInversion *) override { return E_NOTIMPL; }

protected:
    const BdaTuning &statisticsTuning() override { return m_tuning; }
    DeviceState &statisticsDevice() override { return *m_device; }

private:
    BdaControlNode(IUnknown *owner, BdaTuning &tuning, std::shared_ptr<DeviceState> device, ULONG nodeType,
                   bool statistics);
    ~BdaControlNode() override = default;

    volatile LONG m_refs = 0;
    CComPtr<IUnknown> m_owner;
    BdaTuning &m_tuning;
    const std::shared_ptr<DeviceState> m_device;
    const ULONG m_nodeType;
    const bool m_statistics;
};

} // namespace lab
