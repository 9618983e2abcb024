#include "bda/AtscTuningSpace.h"

#include <new>

#include "bda/AtscChannelTuneRequest.h"
#include "bda/TuningSpaceCatalog.h"
#include "common/DeviceState.h"
#include "common/LockedRead.h"

namespace lab {

AtscTuningSpace::AtscTuningSpace(const TuningSpaceFields &fields, const AtscChannelRanges &ranges)
    : TuningSpaceBase(fields), m_ranges(ranges)
{
}

bool AtscTuningSpace::answers(REFIID iid) const
{
    return TuningSpaceBase::answers(iid) || IsEqualIID(iid, __uuidof(IAnalogTVTuningSpace)) ||
           IsEqualIID(iid, __uuidof(IATSCTuningSpace));
}

template <class Value>
HRESULT AtscTuningSpace::write(Value &field, Value value)
{
    std::lock_guard<std::mutex> guard(m_lock);
    field = value;
    return S_OK;
}

STDMETHODIMP AtscTuningSpace::CreateTuneRequest(ITuneRequest **request)
{
    if (!request)
        return E_POINTER;
    *request = nullptr;
    const std::wstring entry = L"CreateTuneRequest " + fields().uniqueName;
    const auto device = TuningSpaceCatalog::device();
    const HRESULT fault = device->hresult(L"fault.CreateTuneRequest");
    if (FAILED(fault)) {
        device->record(entry + L" failed", fault);
        return fault;
    }
    AtscChannelTuneRequest *created = new (std::nothrow) AtscChannelTuneRequest(this);
    if (!created)
        return E_OUTOFMEMORY;
    CComPtr<IATSCChannelTuneRequest> hold(created);
    device->record(entry);
    return hold.QueryInterface(request);
}

STDMETHODIMP AtscTuningSpace::Clone(ITuningSpace **clone)
{
    if (!clone)
        return E_POINTER;
    *clone = nullptr;
    TuningSpaceFields copied;
    const HRESULT hr = cloneFields(copied);
    if (FAILED(hr))
        return hr;
    AtscChannelRanges ranges;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        ranges = m_ranges;
    }
    AtscTuningSpace *copy = new (std::nothrow) AtscTuningSpace(copied, ranges);
    if (!copy)
        return E_OUTOFMEMORY;
    CComPtr<IATSCTuningSpace> hold(copy);
    return hold.QueryInterface(clone);
}

STDMETHODIMP AtscTuningSpace::get_MinChannel(LONG *value) { return readLocked(m_lock, value, m_ranges.minChannel); }
STDMETHODIMP AtscTuningSpace::put_MinChannel(LONG value) { return write(m_ranges.minChannel, value); }
STDMETHODIMP AtscTuningSpace::get_MaxChannel(LONG *value) { return readLocked(m_lock, value, m_ranges.maxChannel); }
STDMETHODIMP AtscTuningSpace::put_MaxChannel(LONG value) { return write(m_ranges.maxChannel, value); }
STDMETHODIMP AtscTuningSpace::get_InputType(TunerInputType *value) { return readLocked(m_lock, value, m_ranges.inputType); }
STDMETHODIMP AtscTuningSpace::put_InputType(TunerInputType value) { return write(m_ranges.inputType, value); }
STDMETHODIMP AtscTuningSpace::get_CountryCode(LONG *value) { return readLocked(m_lock, value, m_ranges.countryCode); }
STDMETHODIMP AtscTuningSpace::put_CountryCode(LONG value) { return write(m_ranges.countryCode, value); }
STDMETHODIMP AtscTuningSpace::get_MinMinorChannel(LONG *value) { return readLocked(m_lock, value, m_ranges.minMinorChannel); }
STDMETHODIMP AtscTuningSpace::put_MinMinorChannel(LONG value) { return write(m_ranges.minMinorChannel, value); }
STDMETHODIMP AtscTuningSpace::get_MaxMinorChannel(LONG *value) { return readLocked(m_lock, value, m_ranges.maxMinorChannel); }
STDMETHODIMP AtscTuningSpace::put_MaxMinorChannel(LONG value) { return write(m_ranges.maxMinorChannel, value); }
STDMETHODIMP AtscTuningSpace::get_MinPhysicalChannel(LONG *value)
{
    return readLocked(m_lock, value, m_ranges.minPhysicalChannel);
}
STDMETHODIMP AtscTuningSpace::put_MinPhysicalChannel(LONG value) { return write(m_ranges.minPhysicalChannel, value); }
STDMETHODIMP AtscTuningSpace::get_MaxPhysicalChannel(LONG *value)
{
    return readLocked(m_lock, value, m_ranges.maxPhysicalChannel);
}
STDMETHODIMP AtscTuningSpace::put_MaxPhysicalChannel(LONG value) { return write(m_ranges.maxPhysicalChannel, value); }

} // namespace lab
