// A control node of StubBdaTuner: an RF tuner node (IBDA_FrequencyFilter) or a demodulator
// node (IBDA_DigitalDemodulator). The setters a network provider uses are recorded on the
// filter; any other call fails the test.
#pragma once

#include <windows.h>
#include <dshow.h>
#include <bdaiface.h>

namespace labtest {

class StubBdaTuner;

class StubBdaNode : public IBDA_FrequencyFilter, public IBDA_DigitalDemodulator {
public:
    StubBdaNode(StubBdaTuner &filter, bool demodulator) : m_filter(filter), m_demodulator(demodulator) {}
    StubBdaNode(const StubBdaNode &) = delete;
    StubBdaNode &operator=(const StubBdaNode &) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IBDA_FrequencyFilter
    STDMETHODIMP put_Autotune(ULONG transponder) override;
    STDMETHODIMP get_Autotune(ULONG *transponder) override;
    STDMETHODIMP put_Frequency(ULONG frequency) override;
    STDMETHODIMP get_Frequency(ULONG *frequency) override;
    STDMETHODIMP put_Polarity(Polarisation polarity) override;
    STDMETHODIMP get_Polarity(Polarisation *polarity) override;
    STDMETHODIMP put_Range(ULONG range) override;
    STDMETHODIMP get_Range(ULONG *range) override;
    STDMETHODIMP put_Bandwidth(ULONG bandwidth) override;
    STDMETHODIMP get_Bandwidth(ULONG *bandwidth) override;
    STDMETHODIMP put_FrequencyMultiplier(ULONG multiplier) override;
    STDMETHODIMP get_FrequencyMultiplier(ULONG *multiplier) override;

    // IBDA_DigitalDemodulator
    STDMETHODIMP put_ModulationType(ModulationType *modulation) override;
    STDMETHODIMP get_ModulationType(ModulationType *modulation) override;
    STDMETHODIMP put_InnerFECMethod(FECMethod *method) override;
    STDMETHODIMP get_InnerFECMethod(FECMethod *method) override;
    STDMETHODIMP put_InnerFECRate(BinaryConvolutionCodeRate *rate) override;
    STDMETHODIMP get_InnerFECRate(BinaryConvolutionCodeRate *rate) override;
    STDMETHODIMP put_OuterFECMethod(FECMethod *method) override;
    STDMETHODIMP get_OuterFECMethod(FECMethod *method) override;
    STDMETHODIMP put_OuterFECRate(BinaryConvolutionCodeRate *rate) override;
    STDMETHODIMP get_OuterFECRate(BinaryConvolutionCodeRate *rate) override;
    STDMETHODIMP put_SymbolRate(ULONG *rate) override;
    STDMETHODIMP get_SymbolRate(ULONG *rate) override;
    STDMETHODIMP put_SpectralInversion(SpectralInversion *inversion) override;
    STDMETHODIMP get_SpectralInversion(SpectralInversion *inversion) override;

private:
    HRESULT set(const wchar_t *call, long value);

    StubBdaTuner &m_filter;
    const bool m_demodulator;
};

} // namespace labtest
