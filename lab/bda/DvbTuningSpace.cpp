#include "bda/DvbTuningSpace.h"

#include <new>

#include "bda/DvbTuneRequest.h"
#include "bda/TuningSpaceCatalog.h"
#include "common/DeviceConfig.h"
#include "common/DeviceState.h"

namespace lab {

namespace {

const wchar_t *systemTypeName(DVBSystemType type)
{
    switch (type) {
    case DVB_Cable:
        return L"Cable";
    case DVB_Terrestrial:
        return L"Terrestrial";
    case DVB_Satellite:
        return L"Satellite";
    case ISDB_Terrestrial:
        return L"ISDB-T";
    case ISDB_Satellite:
        return L"ISDB-S";
    }
    return L"unknown";
}

} // namespace

DvbTuningSpace::DvbTuningSpace(const TuningSpaceFields &fields, DVBSystemType systemType)
    : TuningSpaceBase(fields), m_systemType(systemType)
{
}

bool DvbTuningSpace::answers(REFIID iid) const
{
    if (IsEqualIID(iid, __uuidof(IDVBTuningSpace2)))
        return !refusesSpace2();
    return TuningSpaceBase::answers(iid) || IsEqualIID(iid, __uuidof(IDVBTuningSpace));
}

bool DvbTuningSpace::refusesSpace2() const
{
    const std::wstring fault = DeviceConfig::lower(TuningSpaceCatalog::device()->text(L"fault.IDVBTuningSpace2"));
    if (fault == L"aftersystemtype")
        return m_systemTypePut.load();
    return DeviceConfig::parseBool(fault);
}

ITuneRequest *DvbTuningSpace::newTuneRequest()
{
    return new (std::nothrow) DvbTuneRequest(this);
}

ITuningSpace *DvbTuningSpace::newCopy(const TuningSpaceFields &fields)
{
    std::lock_guard<std::mutex> guard(m_lock);
    DvbTuningSpace *copy = new (std::nothrow) DvbTuningSpace(fields, m_systemType);
    if (copy)
        copy->m_networkId = m_networkId;
    return copy;
}

STDMETHODIMP DvbTuningSpace::get_SystemType(DVBSystemType *systemType)
{
    return read(systemType, m_systemType);
}

STDMETHODIMP DvbTuningSpace::put_SystemType(DVBSystemType systemType)
{
    const std::wstring entry = L"SystemType " + fields().uniqueName + L" " + systemTypeName(systemType);
    const auto device = TuningSpaceCatalog::device();
    const HRESULT fault = device->hresult(L"fault.put_SystemType");
    if (FAILED(fault)) {
        device->record(entry + L" failed", fault);
        return fault;
    }
    write(m_systemType, systemType);
    m_systemTypePut = true;
    device->record(entry);
    return S_OK;
}

STDMETHODIMP DvbTuningSpace::get_NetworkID(LONG *networkId)
{
    return read(networkId, m_networkId);
}

STDMETHODIMP DvbTuningSpace::put_NetworkID(LONG networkId)
{
    return write(m_networkId, networkId);
}

} // namespace lab
