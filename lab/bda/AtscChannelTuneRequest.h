// The tune request of the ATSC-family tuning spaces (IATSCChannelTuneRequest): major channel
// and minor channel, both -1 (not set) at first.
#pragma once

#include "bda/TuneRequestBase.h"

namespace lab {

class AtscChannelTuneRequest final : public TuneRequestBase<IATSCChannelTuneRequest> {
public:
    explicit AtscChannelTuneRequest(ITuningSpace *space) : TuneRequestBase(space) {}

    STDMETHODIMP get_Channel(LONG *channel) override;
    STDMETHODIMP put_Channel(LONG channel) override;
    STDMETHODIMP get_MinorChannel(LONG *minorChannel) override;
    STDMETHODIMP put_MinorChannel(LONG minorChannel) override;
    STDMETHODIMP Clone(ITuneRequest **clone) override;

protected:
    bool answers(REFIID iid) const override;

private:
    long m_channel = -1;
    long m_minorChannel = -1;
};

} // namespace lab
