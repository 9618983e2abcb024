// The tune request of the ATSC tuning spaces (IATSCChannelTuneRequest: major channel and minor
// channel, AtscChannelTuneRequestBase).
#pragma once

#include "bda/AtscChannelTuneRequestBase.h"

namespace lab {

class AtscChannelTuneRequest final : public AtscChannelTuneRequestBase<IATSCChannelTuneRequest> {
public:
    explicit AtscChannelTuneRequest(ITuningSpace *space) : AtscChannelTuneRequestBase(space) {}

    STDMETHODIMP Clone(ITuneRequest **clone) override;
};

} // namespace lab
