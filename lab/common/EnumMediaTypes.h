// IEnumMediaTypes over a snapshot of a pin's types; holds the pin (and so its filter).
#pragma once

#include <windows.h>
#include <dshow.h>
#include <vector>

#include <atlbase.h>

#include "common/ComObject.h"
#include "common/LabModule.h"
#include "common/MediaType.h"

namespace lab {

class EnumMediaTypes final : public ComObject<IEnumMediaTypes>, private LiveObject {
public:
    EnumMediaTypes(IPin *pin, std::vector<MediaType> types, size_t position);

    STDMETHODIMP Next(ULONG count, AM_MEDIA_TYPE **types, ULONG *fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumMediaTypes **clone) override;

private:
    CComPtr<IPin> m_pin;
    std::vector<MediaType> m_types;
    size_t m_position;
};

} // namespace lab
