// ILocator for the lab's locators (ATSCLocator, DVBTLocator): carrier frequency in kHz, inner
// and outer FEC, modulation and symbol rate. Every value starts "not set" (-1), as a new
// Windows locator does; the setters take any value, the network provider judges them. A clone
// has these values and the subclass's.
#pragma once

#include <windows.h>
#include <tuner.h>

#include <mutex>

#include <atlbase.h>

#include "bda/DispatchObject.h"
#include "bda/LockedProperties.h"

namespace lab {

// The ILocator part of a locator, copied by Clone.
struct LocatorFields {
    long frequency = -1;
    FECMethod innerFec = BDA_FEC_METHOD_NOT_SET;
    BinaryConvolutionCodeRate innerFecRate = BDA_BCC_RATE_NOT_SET;
    FECMethod outerFec = BDA_FEC_METHOD_NOT_SET;
    BinaryConvolutionCodeRate outerFecRate = BDA_BCC_RATE_NOT_SET;
    ModulationType modulation = BDA_MOD_NOT_SET;
    long symbolRate = -1;
};

template <class Interface>
class LocatorBase : public DispatchObject<Interface>, protected LockedProperties {
public:
    STDMETHODIMP get_CarrierFrequency(LONG *frequency) override { return read(frequency, m_fields.frequency); }
    STDMETHODIMP put_CarrierFrequency(LONG frequency) override { return write(m_fields.frequency, frequency); }
    STDMETHODIMP get_InnerFEC(FECMethod *fec) override { return read(fec, m_fields.innerFec); }
    STDMETHODIMP put_InnerFEC(FECMethod fec) override { return write(m_fields.innerFec, fec); }
    STDMETHODIMP get_InnerFECRate(BinaryConvolutionCodeRate *rate) override
    {
        return read(rate, m_fields.innerFecRate);
    }
    STDMETHODIMP put_InnerFECRate(BinaryConvolutionCodeRate rate) override
    {
        return write(m_fields.innerFecRate, rate);
    }
    STDMETHODIMP get_OuterFEC(FECMethod *fec) override { return read(fec, m_fields.outerFec); }
    STDMETHODIMP put_OuterFEC(FECMethod fec) override { return write(m_fields.outerFec, fec); }
    STDMETHODIMP get_OuterFECRate(BinaryConvolutionCodeRate *rate) override
    {
        return read(rate, m_fields.outerFecRate);
    }
    STDMETHODIMP put_OuterFECRate(BinaryConvolutionCodeRate rate) override
    {
        return write(m_fields.outerFecRate, rate);
    }
    STDMETHODIMP get_Modulation(ModulationType *modulation) override { return read(modulation, m_fields.modulation); }
    STDMETHODIMP put_Modulation(ModulationType modulation) override { return write(m_fields.modulation, modulation); }
    STDMETHODIMP get_SymbolRate(LONG *rate) override { return read(rate, m_fields.symbolRate); }
    STDMETHODIMP put_SymbolRate(LONG rate) override { return write(m_fields.symbolRate, rate); }
    STDMETHODIMP Clone(ILocator **clone) override
    {
        if (!clone)
            return E_POINTER;
        *clone = nullptr;
        LocatorBase *copy = newCopy();
        if (copy)
            copy->setFields(fields());
        return this->handOut(copy, clone);
    }

protected:
    bool answers(REFIID iid) const override
    {
        return IsEqualIID(iid, __uuidof(ILocator)) || IsEqualIID(iid, __uuidof(IDigitalLocator));
    }

    // A new locator of this kind with this locator's own values (the ILocator ones aside), not
    // yet referenced; null when out of memory.
    virtual LocatorBase *newCopy() = 0;

    LocatorFields fields()
    {
        std::lock_guard<std::mutex> guard(m_lock);
        return m_fields;
    }
    void setFields(const LocatorFields &fields)
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_fields = fields;
    }

private:
    LocatorFields m_fields;
};

} // namespace lab
