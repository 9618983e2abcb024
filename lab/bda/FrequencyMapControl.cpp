#include "bda/FrequencyMapControl.h"

#include <objbase.h>

#include <string>

#include "bda/DvbtFrequencyPlan.h"
#include "bda/NetworkProvider.h"
#include "common/DeviceRegistry.h"
#include "common/DeviceState.h"

namespace lab {

namespace {

// Hands a list out as a CoTaskMem array of ULONGs; nothing is allocated for an empty list.
HRESULT handOut(const std::vector<unsigned long> &values, ULONG *count, ULONG **list)
{
    if (!count || !list)
        return E_POINTER;
    *count = 0;
    *list = nullptr;
    if (values.empty())
        return S_OK;
    ULONG *array = static_cast<ULONG *>(CoTaskMemAlloc(values.size() * sizeof(ULONG)));
    if (!array)
        return E_OUTOFMEMORY;
    for (size_t i = 0; i < values.size(); ++i)
        array[i] = static_cast<ULONG>(values[i]);
    *count = static_cast<ULONG>(values.size());
    *list = array;
    return S_OK;
}

} // namespace

FrequencyMapControl::FrequencyMapControl(IUnknown &owner)
    : m_owner(owner), m_device(DeviceRegistry::device(NetworkProvider::kDeviceName))
{
    const std::vector<unsigned long> codes = DvbtFrequencyPlan::countryCodes();
    if (!codes.empty()) {
        m_countryCode = static_cast<ULONG>(codes.front());
        DvbtFrequencyPlan::frequencies(codes.front(), m_table);
    }
}

STDMETHODIMP FrequencyMapControl::QueryInterface(REFIID iid, void **out)
{
    return m_owner.QueryInterface(iid, out);
}
STDMETHODIMP_(ULONG) FrequencyMapControl::AddRef()
{
    return m_owner.AddRef();
}
STDMETHODIMP_(ULONG) FrequencyMapControl::Release()
{
    return m_owner.Release();
}

HRESULT FrequencyMapControl::fault(const wchar_t *method, const std::wstring &entry)
{
    const HRESULT hr = m_device->hresult(std::wstring(L"fault.") + method);
    if (FAILED(hr))
        m_device->record(entry + L" failed", hr);
    return hr;
}

STDMETHODIMP FrequencyMapControl::get_FrequencyMapping(ULONG *count, ULONG **list)
{
    std::lock_guard<std::mutex> guard(m_lock);
    return handOut(m_table, count, list);
}

STDMETHODIMP FrequencyMapControl::put_FrequencyMapping(ULONG count, ULONG list[])
{
    if (count > 0 && !list)
        return E_POINTER;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_table.assign(list, list + count);
    }
    m_device->record(L"FrequencyMapping " + std::to_wstring(count));
    return S_OK;
}

STDMETHODIMP FrequencyMapControl::get_CountryCode(ULONG *countryCode)
{
    if (!countryCode)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(m_lock);
    *countryCode = m_countryCode;
    return S_OK;
}

STDMETHODIMP FrequencyMapControl::put_CountryCode(ULONG countryCode)
{
    const std::wstring entry = L"CountryCode " + std::to_wstring(countryCode);
    HRESULT hr = fault(L"put_CountryCode", entry);
    if (FAILED(hr))
        return hr;
    std::vector<unsigned long> table;
    const bool known = DvbtFrequencyPlan::frequencies(countryCode, table);
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_countryCode = countryCode;
        if (known)
            m_table = table;
    }
    if (!known) {
        m_device->record(entry + L" failed", E_INVALIDARG);
        return E_INVALIDARG;
    }
    m_device->record(entry);
    return S_OK;
}

STDMETHODIMP FrequencyMapControl::get_DefaultFrequencyMapping(ULONG countryCode, ULONG *count, ULONG **list)
{
    if (!count || !list)
        return E_POINTER;
    const std::wstring entry = L"DefaultFrequencyMapping " + std::to_wstring(countryCode);
    HRESULT hr = fault(L"get_DefaultFrequencyMapping", entry);
    if (FAILED(hr))
        return hr;
    std::vector<unsigned long> table;
    if (!DvbtFrequencyPlan::frequencies(countryCode, table)) {
        m_device->record(entry + L" failed", E_INVALIDARG);
        return E_INVALIDARG;
    }
    // A provider that knows only part of the country's plan, or none of it.
    const long long limit = m_device->integer(L"fault.frequencies", -1);
    if (limit >= 0 && static_cast<size_t>(limit) < table.size())
        table.resize(static_cast<size_t>(limit));
    hr = handOut(table, count, list);
    if (SUCCEEDED(hr))
        m_device->record(entry + L" " + std::to_wstring(table.size()));
    return hr;
}

STDMETHODIMP FrequencyMapControl::get_CountryCodeList(ULONG *count, ULONG **list)
{
    if (!count || !list)
        return E_POINTER;
    HRESULT hr = fault(L"get_CountryCodeList", L"CountryCodeList");
    if (FAILED(hr))
        return hr;
    std::vector<unsigned long> codes = DvbtFrequencyPlan::countryCodes();
    // A provider may report a code more than once.
    const std::vector<long long> reported = m_device->integers(L"country-codes");
    if (!reported.empty())
        codes.assign(reported.begin(), reported.end());
    hr = handOut(codes, count, list);
    if (SUCCEEDED(hr))
        m_device->record(L"CountryCodeList " + std::to_wstring(codes.size()));
    return hr;
}

} // namespace lab
