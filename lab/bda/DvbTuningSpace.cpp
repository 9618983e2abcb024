#include "bda/DvbTuningSpace.h"

#include <new>

#include "bda/DvbTuneRequest.h"
#include "bda/TuningSpaceCatalog.h"
#include "common/DeviceState.h"
#include "common/LockedRead.h"

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
    return TuningSpaceBase::answers(iid) || IsEqualIID(iid, __uuidof(IDVBTuningSpace)) ||
           IsEqualIID(iid, __uuidof(IDVBTuningSpace2));
}

STDMETHODIMP DvbTuningSpace::CreateTuneRequest(ITuneRequest **request)
{
    if (!request)
        return E_POINTER;
    *request = nullptr;
    const HRESULT allowed = TuningSpaceCatalog::admitTuneRequest(fields().uniqueName);
    if (FAILED(allowed))
        return allowed;
    DvbTuneRequest *created = new (std::nothrow) DvbTuneRequest(this);
    if (!created)
        return E_OUTOFMEMORY;
    CComPtr<IDVBTuneRequest> hold(created);
    return hold.QueryInterface(request);
}

STDMETHODIMP DvbTuningSpace::Clone(ITuningSpace **clone)
{
    if (!clone)
        return E_POINTER;
    *clone = nullptr;
    TuningSpaceFields copied;
    const HRESULT hr = cloneFields(copied);
    if (FAILED(hr))
        return hr;
    DvbTuningSpace *copy = nullptr;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        copy = new (std::nothrow) DvbTuningSpace(copied, m_systemType);
        if (copy)
            copy->m_networkId = m_networkId;
    }
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IDVBTuningSpace2> hold(copy);
    return hold.QueryInterface(clone);
}

STDMETHODIMP DvbTuningSpace::get_SystemType(DVBSystemType *systemType) { return readLocked(m_lock, systemType, m_systemType); }

STDMETHODIMP DvbTuningSpace::put_SystemType(DVBSystemType systemType)
{
    const std::wstring entry = L"SystemType " + fields().uniqueName + L" " + systemTypeName(systemType);
    const auto device = TuningSpaceCatalog::device();
    const HRESULT fault = device->hresult(L"fault.put_SystemType");
    if (FAILED(fault)) {
        device->record(entry + L" failed", fault);
        return fault;
    }
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_systemType = systemType;
    }
    device->record(entry);
    return S_OK;
}

STDMETHODIMP DvbTuningSpace::get_NetworkID(LONG *networkId) { return readLocked(m_lock, networkId, m_networkId); }

STDMETHODIMP DvbTuningSpace::put_NetworkID(LONG networkId)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_networkId = networkId;
    return S_OK;
}

} // namespace lab
