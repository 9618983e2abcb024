// The ATSC part of the ATSC-family tuning spaces (AtscTuningSpace, DigitalCableTuningSpace):
// IAnalogTVTuningSpace (channel range, input type, country code) and IATSCTuningSpace (minor and
// physical channel ranges). The values are the space's description; tune requests are not
// checked against them.
#pragma once

#include "bda/TuningSpaceBase.h"
#include "common/LockedRead.h"

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

template <class Interface>
class AtscTuningSpaceBase : public TuningSpaceBase<Interface> {
public:
    AtscTuningSpaceBase(const TuningSpaceFields &fields, const AtscChannelRanges &ranges)
        : TuningSpaceBase<Interface>(fields), m_ranges(ranges)
    {
    }

    // IAnalogTVTuningSpace
    STDMETHODIMP get_MinChannel(LONG *value) override { return read(value, m_ranges.minChannel); }
    STDMETHODIMP put_MinChannel(LONG value) override { return write(m_ranges.minChannel, value); }
    STDMETHODIMP get_MaxChannel(LONG *value) override { return read(value, m_ranges.maxChannel); }
    STDMETHODIMP put_MaxChannel(LONG value) override { return write(m_ranges.maxChannel, value); }
    STDMETHODIMP get_InputType(TunerInputType *value) override { return read(value, m_ranges.inputType); }
    STDMETHODIMP put_InputType(TunerInputType value) override { return write(m_ranges.inputType, value); }
    STDMETHODIMP get_CountryCode(LONG *value) override { return read(value, m_ranges.countryCode); }
    STDMETHODIMP put_CountryCode(LONG value) override { return write(m_ranges.countryCode, value); }

    // IATSCTuningSpace
    STDMETHODIMP get_MinMinorChannel(LONG *value) override { return read(value, m_ranges.minMinorChannel); }
    STDMETHODIMP put_MinMinorChannel(LONG value) override { return write(m_ranges.minMinorChannel, value); }
    STDMETHODIMP get_MaxMinorChannel(LONG *value) override { return read(value, m_ranges.maxMinorChannel); }
    STDMETHODIMP put_MaxMinorChannel(LONG value) override { return write(m_ranges.maxMinorChannel, value); }
    STDMETHODIMP get_MinPhysicalChannel(LONG *value) override { return read(value, m_ranges.minPhysicalChannel); }
    STDMETHODIMP put_MinPhysicalChannel(LONG value) override { return write(m_ranges.minPhysicalChannel, value); }
    STDMETHODIMP get_MaxPhysicalChannel(LONG *value) override { return read(value, m_ranges.maxPhysicalChannel); }
    STDMETHODIMP put_MaxPhysicalChannel(LONG value) override { return write(m_ranges.maxPhysicalChannel, value); }

protected:
    bool answers(REFIID iid) const override
    {
        return TuningSpaceBase<Interface>::answers(iid) || IsEqualIID(iid, __uuidof(IAnalogTVTuningSpace)) ||
               IsEqualIID(iid, __uuidof(IATSCTuningSpace));
    }

    AtscChannelRanges ranges()
    {
        std::lock_guard<std::mutex> guard(this->m_lock);
        return m_ranges;
    }

    template <class Value>
    HRESULT read(Value *out, const Value &field)
    {
        return readLocked(this->m_lock, out, field);
    }
    template <class Value>
    HRESULT write(Value &field, Value value)
    {
        std::lock_guard<std::mutex> guard(this->m_lock);
        field = value;
        return S_OK;
    }

private:
    AtscChannelRanges m_ranges;
};

} // namespace lab
