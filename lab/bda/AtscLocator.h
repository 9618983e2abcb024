// The ATSC locator under CLSID_ATSCLocator (IATSCLocator2): physical channel, transport stream
// ID and program number besides the ILocator values; also what the ATSC-family tuning spaces
// hand out as their default locator.
#pragma once

#include "bda/LocatorBase.h"

namespace lab {

class AtscLocator final : public LocatorBase<IATSCLocator2> {
public:
    // A locator with only the modulation set (a tuning space's default locator).
    static CComPtr<ILocator> withModulation(ModulationType modulation);

    STDMETHODIMP get_PhysicalChannel(LONG *channel) override;
    STDMETHODIMP put_PhysicalChannel(LONG channel) override;
    STDMETHODIMP get_TSID(LONG *tsid) override;
    STDMETHODIMP put_TSID(LONG tsid) override;
    STDMETHODIMP get_ProgramNumber(LONG *program) override;
    STDMETHODIMP put_ProgramNumber(LONG program) override;
    STDMETHODIMP Clone(ILocator **clone) override;

protected:
    bool answers(REFIID iid) const override;

private:
    long m_physicalChannel = -1;
    long m_tsid = -1;
    long m_programNumber = -1;
};

} // namespace lab
