// The ATSC-family tuning spaces ("ATSC", "ATSCCable", "ClearQAM", "Digital Cable"):
// IATSCTuningSpace with its analog-TV base (channel range, input type, country code) and the
// minor and physical channel ranges. CreateTuneRequest gives an ATSCChannelTuneRequest.
//
// Fault (override of the "System Tuning Spaces" device): fault.CreateTuneRequest = HRESULT.
// Journal of that device: "CreateTuneRequest <unique name>" (" failed 0x<hr>" when refused).
#pragma once

#include "bda/TuningSpaceBase.h"

namespace lab {

// The IAnalogTVTuningSpace and IATSCTuningSpace values of a space.
struct AtscChannelRanges {
    long minChannel = -1;
    long maxChannel = -1;
    TunerInputType inputType = TunerInputCable;
    long countryCode = 0;
    long minMinorChannel = -1;
    long maxMinorChannel = -1;
    long minPhysicalChannel = -1;
    long maxPhysicalChannel = -1;
};

class AtscTuningSpace final : public TuningSpaceBase<IATSCTuningSpace> {
public:
    AtscTuningSpace(const TuningSpaceFields &fields, const AtscChannelRanges &ranges);

    STDMETHODIMP CreateTuneRequest(ITuneRequest **request) override;
    STDMETHODIMP Clone(ITuningSpace **clone) override;

    // IAnalogTVTuningSpace
    STDMETHODIMP get_MinChannel(LONG *value) override;
    STDMETHODIMP put_MinChannel(LONG value) override;
    STDMETHODIMP get_MaxChannel(LONG *value) override;
    STDMETHODIMP put_MaxChannel(LONG value) override;
    STDMETHODIMP get_InputType(TunerInputType *value) override;
    STDMETHODIMP put_InputType(TunerInputType value) override;
    STDMETHODIMP get_CountryCode(LONG *value) override;
    STDMETHODIMP put_CountryCode(LONG value) override;

    // IATSCTuningSpace
    STDMETHODIMP get_MinMinorChannel(LONG *value) override;
    STDMETHODIMP put_MinMinorChannel(LONG value) override;
    STDMETHODIMP get_MaxMinorChannel(LONG *value) override;
    STDMETHODIMP put_MaxMinorChannel(LONG value) override;
    STDMETHODIMP get_MinPhysicalChannel(LONG *value) override;
    STDMETHODIMP put_MinPhysicalChannel(LONG value) override;
    STDMETHODIMP get_MaxPhysicalChannel(LONG *value) override;
    STDMETHODIMP put_MaxPhysicalChannel(LONG value) override;

protected:
    bool answers(REFIID iid) const override;

private:
    template <class Value>
    HRESULT write(Value &field, Value value);

    AtscChannelRanges m_ranges;
};

} // namespace lab
