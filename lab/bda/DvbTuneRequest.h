// The tune request of the DVB tuning spaces (IDVBTuneRequest): original network ID, transport
// stream ID and service ID, all -1 (not set) at first.
// Faults (overrides of the "System Tuning Spaces" device): fault.IDVBTuneRequest = yes (the
// request answers E_NOINTERFACE for IDVBTuneRequest), fault.put_Locator = HRESULT.
#pragma once

#include "bda/TuneRequestBase.h"

namespace lab {

class DvbTuneRequest final : public TuneRequestBase<IDVBTuneRequest> {
public:
    explicit DvbTuneRequest(ITuningSpace *space) : TuneRequestBase(space) {}

    STDMETHODIMP get_ONID(LONG *onid) override;
    STDMETHODIMP put_ONID(LONG onid) override;
    STDMETHODIMP get_TSID(LONG *tsid) override;
    STDMETHODIMP put_TSID(LONG tsid) override;
    STDMETHODIMP get_SID(LONG *sid) override;
    STDMETHODIMP put_SID(LONG sid) override;
    STDMETHODIMP put_Locator(ILocator *locator) override;

protected:
    bool answers(REFIID iid) const override;
    ITuneRequest *newCopy(ITuningSpace *space) override;

private:
    long m_onid = -1;
    long m_tsid = -1;
    long m_sid = -1;
};

} // namespace lab
