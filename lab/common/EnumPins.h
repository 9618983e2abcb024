// IEnumPins over a lab filter's pins; holds the filter while it lives.
#pragma once

#include <windows.h>
#include <dshow.h>

#include <atlbase.h>

#include "common/ComObject.h"
#include "common/LabModule.h"

namespace lab {

class BaseFilter;

class EnumPins final : public ComObject<IEnumPins>, private LiveObject {
public:
    EnumPins(BaseFilter &filter, int position);

    STDMETHODIMP Next(ULONG count, IPin **pins, ULONG *fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumPins **clone) override;

private:
    BaseFilter &m_filter;
    CComPtr<IBaseFilter> m_hold;
    int m_position;
};

} // namespace lab
