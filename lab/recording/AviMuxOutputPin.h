// The multiplexer's "AVI Out" pin. It connects to a writer whose input pin offers IStream (as
// the file writer's does on Windows) and the multiplexer writes the file through that stream.
#pragma once

#include "common/OutputPin.h"

namespace lab {

class AviMuxOutputPin : public OutputPin {
public:
    explicit AviMuxOutputPin(BaseFilter &filter);

    std::vector<MediaType> mediaTypes() override;
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

    // The writer's stream, or null while unconnected.
    CComPtr<IStream> stream();

protected:
    HRESULT onConnected() override;
    long bufferSize() override { return 64 * 1024; }
    long bufferCount() override { return 1; }
};

} // namespace lab
