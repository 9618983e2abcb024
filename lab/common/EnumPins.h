// IEnumPins over a lab filter's pins; holds the filter while it lives.
#pragma once

#include <windows.h>
#include <dshow.h>

#include <atlbase.h>

#include "common/LabModule.h"

namespace lab {

class BaseFilter;

class EnumPins final : public IEnumPins, private LiveObject {
public:
    EnumPins(BaseFilter &filter, int position);
    EnumPins(const EnumPins &) = delete;
    EnumPins &operator=(const EnumPins &) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP Next(ULONG count, IPin **pins, ULONG *fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumPins **clone) override;

private:
    ~EnumPins() = default;
    volatile LONG m_refs = 0;
    BaseFilter &m_filter;
    CComPtr<IBaseFilter> m_hold;
    int m_position;
};

} // namespace lab
