#include "bda/AtscLocator.h"

#include <new>

#include "common/ClassRegistry.h"

namespace lab {

namespace {
const ClassRegistration registration(ClassInfo::plain(CLSID_ATSCLocator, L"Sorvane Lab ATSC Locator",
                                                      &createObject<AtscLocator, IATSCLocator2>));
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

STDMETHODIMP AtscLocator::get_PhysicalChannel(LONG *channel)
{
    return read(channel, m_physicalChannel);
}
STDMETHODIMP AtscLocator::put_PhysicalChannel(LONG channel)
{
    return write(m_physicalChannel, channel);
}
STDMETHODIMP AtscLocator::get_TSID(LONG *tsid)
{
    return read(tsid, m_tsid);
}
STDMETHODIMP AtscLocator::put_TSID(LONG tsid)
{
    return write(m_tsid, tsid);
}
STDMETHODIMP AtscLocator::get_ProgramNumber(LONG *program)
{
    return read(program, m_programNumber);
}
STDMETHODIMP AtscLocator::put_ProgramNumber(LONG program)
{
    return write(m_programNumber, program);
}

LocatorBase<IATSCLocator2> *AtscLocator::newCopy()
{
    std::lock_guard<std::mutex> guard(m_lock);
    AtscLocator *copy = new (std::nothrow) AtscLocator();
    if (copy) {
        copy->m_physicalChannel = m_physicalChannel;
        copy->m_tsid = m_tsid;
        copy->m_programNumber = m_programNumber;
    }
    return copy;
}

} // namespace lab
