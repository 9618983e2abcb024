// The tune request of the "Digital Cable" tuning space (IDigitalCableTuneRequest): the ATSC
// channels of AtscChannelTuneRequestBase plus the cable major channel and source ID, -1 (not
// set) at first.
#pragma once

#include "bda/AtscChannelTuneRequestBase.h"

namespace lab {

class DigitalCableTuneRequest final : public AtscChannelTuneRequestBase<IDigitalCableTuneRequest> {
public:
    explicit DigitalCableTuneRequest(ITuningSpace *space) : AtscChannelTuneRequestBase(space) {}

    STDMETHODIMP get_MajorChannel(LONG *channel) override { return read(channel, m_majorChannel); }
    STDMETHODIMP put_MajorChannel(LONG channel) override { return write(m_majorChannel, channel); }
    STDMETHODIMP get_SourceID(LONG *sourceId) override { return read(sourceId, m_sourceId); }
    STDMETHODIMP put_SourceID(LONG sourceId) override { return write(m_sourceId, sourceId); }
    STDMETHODIMP Clone(ITuneRequest **clone) override;

protected:
    bool answers(REFIID iid) const override;

private:
    long m_majorChannel = -1;
    long m_sourceId = -1;
};

} // namespace lab
