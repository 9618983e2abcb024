// The ATSC tuning spaces "ATSC", "ATSCCable" and "ClearQAM" (CLSID_ATSCTuningSpace,
// IATSCTuningSpace; AtscTuningSpaceBase). CreateTuneRequest gives an ATSCChannelTuneRequest.
//
// Fault (override of the "System Tuning Spaces" device): fault.CreateTuneRequest = HRESULT.
// Journal of that device: "CreateTuneRequest <unique name>" (" failed 0x<hr>" when refused).
#pragma once

#include "bda/AtscTuningSpaceBase.h"

namespace lab {

class AtscTuningSpace final : public AtscTuningSpaceBase<IATSCTuningSpace> {
public:
    AtscTuningSpace(const TuningSpaceFields &fields, const AtscChannelRanges &ranges)
        : AtscTuningSpaceBase(fields, ranges)
    {
    }

    STDMETHODIMP CreateTuneRequest(ITuneRequest **request) override;
    STDMETHODIMP Clone(ITuningSpace **clone) override;
};

} // namespace lab
