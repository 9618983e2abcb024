// The network provider's output pin, "Antenna Out": the antenna link to a BDA tuner filter's
// input (major type KSDATAFORMAT_TYPE_BDA_ANTENNA). It is a topology link only: no allocator is
// negotiated and no sample ever travels on it; the tuning goes to the tuner filter through its
// BDA control interfaces.
#pragma once

#include "common/BasePin.h"

namespace lab {

class AntennaPin final : public BasePin {
public:
    explicit AntennaPin(BaseFilter &filter);

    STDMETHODIMP Connect(IPin *receiver, const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP ReceiveConnection(IPin *connector, const AM_MEDIA_TYPE *type) override;

    std::vector<MediaType> mediaTypes() override;
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

    // The connected tuner filter's input pin, or null.
    CComPtr<IPin> peer();
};

} // namespace lab
