// The DVB-T locator under CLSID_DVBTLocator (IDVBTLocator): bandwidth in MHz, low-priority
// FEC, hierarchy alpha, guard interval, transmission mode and the other-frequency flag besides
// the ILocator values; also the DVB-T tuning space's default locator.
// Fault (override of the "System Tuning Spaces" device): fault.put_CarrierFrequency = HRESULT.
#pragma once

#include "bda/LocatorBase.h"

namespace lab {

class DvbtLocator final : public LocatorBase<IDVBTLocator> {
public:
    // A locator with only the bandwidth set (the tuning space's default locator).
    static CComPtr<ILocator> withBandwidth(long megahertz);

    STDMETHODIMP put_CarrierFrequency(LONG frequency) override;
    STDMETHODIMP get_Bandwidth(LONG *bandwidth) override;
    STDMETHODIMP put_Bandwidth(LONG bandwidth) override;
    STDMETHODIMP get_LPInnerFEC(FECMethod *fec) override;
    STDMETHODIMP put_LPInnerFEC(FECMethod fec) override;
    STDMETHODIMP get_LPInnerFECRate(BinaryConvolutionCodeRate *rate) override;
    STDMETHODIMP put_LPInnerFECRate(BinaryConvolutionCodeRate rate) override;
    STDMETHODIMP get_HAlpha(HierarchyAlpha *alpha) override;
    STDMETHODIMP put_HAlpha(HierarchyAlpha alpha) override;
    STDMETHODIMP get_Guard(GuardInterval *guard) override;
    STDMETHODIMP put_Guard(GuardInterval guard) override;
    STDMETHODIMP get_Mode(TransmissionMode *mode) override;
    STDMETHODIMP put_Mode(TransmissionMode mode) override;
    STDMETHODIMP get_OtherFrequencyInUse(VARIANT_BOOL *inUse) override;
    STDMETHODIMP put_OtherFrequencyInUse(VARIANT_BOOL inUse) override;

protected:
    bool answers(REFIID iid) const override;
    LocatorBase *newCopy() override;

private:
    struct Transmission {
        long bandwidth = -1;
        FECMethod lpInnerFec = BDA_FEC_METHOD_NOT_SET;
        BinaryConvolutionCodeRate lpInnerFecRate = BDA_BCC_RATE_NOT_SET;
        HierarchyAlpha alpha = BDA_HALPHA_NOT_SET;
        GuardInterval guard = BDA_GUARD_NOT_SET;
        TransmissionMode mode = BDA_XMIT_MODE_NOT_SET;
        VARIANT_BOOL otherFrequencyInUse = VARIANT_FALSE;
    };
    Transmission m_transmission;
};

} // namespace lab
