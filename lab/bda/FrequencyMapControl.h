// IFrequencyMap of the DVB-T network provider: the country whose DVB-T frequency table it uses
// (DvbtFrequencyPlan; the table's first country at creation), that table (replaceable with
// put_FrequencyMapping), the default table of any country and the list of countries with one.
// Lists go out in CoTaskMem arrays the caller frees. A country without a table is refused with
// E_INVALIDARG; put_CountryCode then keeps the code but the previous table, as Windows does, so
// an application may supply its own table for it.
//
// Device "Network Provider":
//   fault.put_CountryCode, fault.get_CountryCodeList, fault.get_DefaultFrequencyMapping = HRESULT
//   Journal: "CountryCode <code>", "CountryCodeList <count>", "DefaultFrequencyMapping <code> <count>",
//            "FrequencyMapping <count>"; a refused call ends in " failed 0x<hr>".
#pragma once

#include <windows.h>
#include <bdaiface.h>

#include <memory>
#include <mutex>
#include <vector>

namespace lab {

class DeviceState;

class FrequencyMapControl : public IFrequencyMap {
public:
    explicit FrequencyMapControl(IUnknown &owner);
    FrequencyMapControl(const FrequencyMapControl &) = delete;
    FrequencyMapControl &operator=(const FrequencyMapControl &) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP get_FrequencyMapping(ULONG *count, ULONG **list) override;
    STDMETHODIMP put_FrequencyMapping(ULONG count, ULONG list[]) override;
    STDMETHODIMP get_CountryCode(ULONG *countryCode) override;
    STDMETHODIMP put_CountryCode(ULONG countryCode) override;
    STDMETHODIMP get_DefaultFrequencyMapping(ULONG countryCode, ULONG *count, ULONG **list) override;
    STDMETHODIMP get_CountryCodeList(ULONG *count, ULONG **list) override;

private:
    // The injected failure of that call, journaled with its entry; else S_OK.
    HRESULT fault(const wchar_t *method, const std::wstring &entry);

    IUnknown &m_owner;
    const std::shared_ptr<DeviceState> m_device;
    std::mutex m_lock;
    ULONG m_countryCode = 0;
    std::vector<unsigned long> m_table;
};

} // namespace lab
