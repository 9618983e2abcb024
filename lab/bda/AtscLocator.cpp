#include "bda/AtscLocator.h"

#include <new>

#include "common/ClassRegistry.h"

namespace lab {

namespace {
const ClassRegistration registration(
    ClassInfo::plain(CLSID_ATSCLocator, L"Sorvane Lab ATSC Locator", &createObject<AtscLocator, IATSCLocator2>));
}

CComPtr<ILocator> AtscLocator::withModulation(ModulationType modulation)
{
    CComPtr<ILocator> locator(new (std::nothrow) AtscLocator());
    if (locator)
        locator->put_Modulation(modulation);
    return locator;
}

bool AtscLocator::answers(REFIID iid) const
{
    return LocatorBase::answers(iid) || IsEqualIID(iid, __uuidof(IATSCLocator)) ||
           IsEqualIID(iid, __uuidof(IATSCLocator2));
}

STDMETHODIMP AtscLocator::get_PhysicalChannel(LONG *channel) { return readLocked(m_lock, channel, m_physicalChannel); }
STDMETHODIMP AtscLocator::put_PhysicalChannel(LONG channel) { return write(m_physicalChannel, channel); }
STDMETHODIMP AtscLocator::get_TSID(LONG *tsid) { return readLocked(m_lock, tsid, m_tsid); }
STDMETHODIMP AtscLocator::put_TSID(LONG tsid) { return write(m_tsid, tsid); }
STDMETHODIMP AtscLocator::get_ProgramNumber(LONG *program) { return readLocked(m_lock, program, m_programNumber); }
STDMETHODIMP AtscLocator::put_ProgramNumber(LONG program) { return write(m_programNumber, program); }

STDMETHODIMP AtscLocator::Clone(ILocator **clone)
{
    if (!clone)
        return E_POINTER;
    *clone = nullptr;
    AtscLocator *copy = new (std::nothrow) AtscLocator();
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<ILocator> hold(copy);
    copy->setFields(fields());
    {
        std::lock_guard<std::mutex> guard(m_lock);
        copy->m_physicalChannel = m_physicalChannel;
        copy->m_tsid = m_tsid;
        copy->m_programNumber = m_programNumber;
    }
    *clone = hold.Detach();
    return S_OK;
}

} // namespace lab
