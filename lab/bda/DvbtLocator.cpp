#include "bda/DvbtLocator.h"

#include <new>

#include "bda/TuningSpaceCatalog.h"
#include "common/ClassRegistry.h"
#include "common/DeviceState.h"

namespace lab {

namespace {
const ClassRegistration registration(ClassInfo::plain(CLSID_DVBTLocator, L"Sorvane Lab DVB-T Locator",
                                                      &createObject<DvbtLocator, IDVBTLocator>));
}

CComPtr<ILocator> DvbtLocator::withBandwidth(long megahertz)
{
    CComPtr<IDVBTLocator> locator(new (std::nothrow) DvbtLocator());
    if (locator)
        locator->put_Bandwidth(megahertz);
    return CComPtr<ILocator>(locator.p);
}

bool DvbtLocator::answers(REFIID iid) const
{
    return LocatorBase::answers(iid) || IsEqualIID(iid, __uuidof(IDVBTLocator));
}

STDMETHODIMP DvbtLocator::put_CarrierFrequency(LONG frequency)
{
    const HRESULT fault = TuningSpaceCatalog::device()->hresult(L"fault.put_CarrierFrequency");
    return FAILED(fault) ? fault : LocatorBase::put_CarrierFrequency(frequency);
}

STDMETHODIMP DvbtLocator::get_Bandwidth(LONG *bandwidth)
{
    return read(bandwidth, m_transmission.bandwidth);
}
STDMETHODIMP DvbtLocator::put_Bandwidth(LONG bandwidth)
{
    return write(m_transmission.bandwidth, bandwidth);
}
STDMETHODIMP DvbtLocator::get_LPInnerFEC(FECMethod *fec)
{
    return read(fec, m_transmission.lpInnerFec);
}
STDMETHODIMP DvbtLocator::put_LPInnerFEC(FECMethod fec)
{
    return write(m_transmission.lpInnerFec, fec);
}
STDMETHODIMP DvbtLocator::get_LPInnerFECRate(BinaryConvolutionCodeRate *rate)
{
    return read(rate, m_transmission.lpInnerFecRate);
}
STDMETHODIMP DvbtLocator::put_LPInnerFECRate(BinaryConvolutionCodeRate rate)
{
    return write(m_transmission.lpInnerFecRate, rate);
}
STDMETHODIMP DvbtLocator::get_HAlpha(HierarchyAlpha *alpha)
{
    return read(alpha, m_transmission.alpha);
}
STDMETHODIMP DvbtLocator::put_HAlpha(HierarchyAlpha alpha)
{
    return write(m_transmission.alpha, alpha);
}
STDMETHODIMP DvbtLocator::get_Guard(GuardInterval *guard)
{
    return read(guard, m_transmission.guard);
}
STDMETHODIMP DvbtLocator::put_Guard(GuardInterval guard)
{
    return write(m_transmission.guard, guard);
}
STDMETHODIMP DvbtLocator::get_Mode(TransmissionMode *mode)
{
    return read(mode, m_transmission.mode);
}
STDMETHODIMP DvbtLocator::put_Mode(TransmissionMode mode)
{
    return write(m_transmission.mode, mode);
}
STDMETHODIMP DvbtLocator::get_OtherFrequencyInUse(VARIANT_BOOL *inUse)
{
    return read(inUse, m_transmission.otherFrequencyInUse);
}
STDMETHODIMP DvbtLocator::put_OtherFrequencyInUse(VARIANT_BOOL inUse)
{
    return write(m_transmission.otherFrequencyInUse, inUse);
}

LocatorBase<IDVBTLocator> *DvbtLocator::newCopy()
{
    std::lock_guard<std::mutex> guard(m_lock);
    DvbtLocator *copy = new (std::nothrow) DvbtLocator();
    if (copy)
        copy->m_transmission = m_transmission;
    return copy;
}

} // namespace lab
