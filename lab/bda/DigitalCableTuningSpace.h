// The "Digital Cable" tuning space (CLSID_DigitalCableTuningSpace, IDigitalCableTuningSpace):
// the ATSC values of AtscTuningSpaceBase plus the major channel and source ID ranges.
// CreateTuneRequest gives a DigitalCableTuneRequest.
//
// Fault (override of the "System Tuning Spaces" device): fault.CreateTuneRequest = HRESULT.
// Journal of that device: "CreateTuneRequest Digital Cable" (" failed 0x<hr>" when refused).
#pragma once

#include "bda/AtscTuningSpaceBase.h"

namespace lab {

// The IDigitalCableTuningSpace values of a space.
struct CableChannelRanges {
    long minMajorChannel = -1;
    long maxMajorChannel = -1;
    long minSourceId = -1;
    long maxSourceId = -1;
};

class DigitalCableTuningSpace final : public AtscTuningSpaceBase<IDigitalCableTuningSpace> {
public:
    DigitalCableTuningSpace(const TuningSpaceFields &fields, const AtscChannelRanges &ranges,
                            const CableChannelRanges &cable)
        : AtscTuningSpaceBase(fields, ranges), m_cable(cable)
    {
    }

    STDMETHODIMP CreateTuneRequest(ITuneRequest **request) override;
    STDMETHODIMP Clone(ITuningSpace **clone) override;

    STDMETHODIMP get_MinMajorChannel(LONG *value) override { return read(value, m_cable.minMajorChannel); }
    STDMETHODIMP put_MinMajorChannel(LONG value) override { return write(m_cable.minMajorChannel, value); }
    STDMETHODIMP get_MaxMajorChannel(LONG *value) override { return read(value, m_cable.maxMajorChannel); }
    STDMETHODIMP put_MaxMajorChannel(LONG value) override { return write(m_cable.maxMajorChannel, value); }
    STDMETHODIMP get_MinSourceID(LONG *value) override { return read(value, m_cable.minSourceId); }
    STDMETHODIMP put_MinSourceID(LONG value) override { return write(m_cable.minSourceId, value); }
    STDMETHODIMP get_MaxSourceID(LONG *value) override { return read(value, m_cable.maxSourceId); }
    STDMETHODIMP put_MaxSourceID(LONG value) override { return write(m_cable.maxSourceId, value); }

protected:
    bool answers(REFIID iid) const override;

private:
    CableChannelRanges m_cable;
};

} // namespace lab
