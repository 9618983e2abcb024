// The "DVB-T" tuning space: IDVBTuningSpace2 (system type, network ID). CreateTuneRequest gives
// a DVBTuneRequest.
//
// Faults (overrides of the "System Tuning Spaces" device): fault.CreateTuneRequest,
// fault.put_SystemType = HRESULT; fault.IDVBTuningSpace2 = yes (the space answers E_NOINTERFACE
// for IDVBTuningSpace2) or afterSystemType (it does so once its system type was put). Journal of that device: "CreateTuneRequest <unique name>",
// "SystemType <unique name> <Cable|Terrestrial|Satellite|ISDB-T|ISDB-S>" (" failed 0x<hr>" when
// refused).
#pragma once

#include "bda/TuningSpaceBase.h"

#include <atomic>

namespace lab {

class DvbTuningSpace final : public TuningSpaceBase<IDVBTuningSpace2> {
public:
    DvbTuningSpace(const TuningSpaceFields &fields, DVBSystemType systemType);

    STDMETHODIMP get_SystemType(DVBSystemType *systemType) override;
    STDMETHODIMP put_SystemType(DVBSystemType systemType) override;
    STDMETHODIMP get_NetworkID(LONG *networkId) override;
    STDMETHODIMP put_NetworkID(LONG networkId) override;

protected:
    bool answers(REFIID iid) const override;
    ITuneRequest *newTuneRequest() override;
    ITuningSpace *newCopy(const TuningSpaceFields &fields) override;

private:
    bool refusesSpace2() const;

    DVBSystemType m_systemType;
    long m_networkId = -1;
    std::atomic<bool> m_systemTypePut{false};
};

} // namespace lab
