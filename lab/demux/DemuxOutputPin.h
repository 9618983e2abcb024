// An output pin of the lab's MPEG-2 demultiplexer: one fixed media type, and each unit the
// demultiplexer completes for it (a picture's or an audio frame's elementary-stream bytes, or
// one PSI section) delivered as one sample without time stamps.
#pragma once

#include <cstdint>
#include <vector>

#include "common/OutputPin.h"

namespace lab {

class DemuxOutputPin : public OutputPin {
public:
    DemuxOutputPin(BaseFilter &filter, const std::wstring &name, const MediaType &type, long bufferBytes);

    std::vector<MediaType> mediaTypes() override { return {m_offered}; }
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

    // Delivers the unit when connected; a refused sample is dropped as a demultiplexer drops it.
    void deliverUnit(const std::vector<std::uint8_t> &unit, bool discontinuity);

protected:
    long bufferSize() override { return m_bufferBytes; }

private:
    const MediaType m_offered;
    const long m_bufferBytes;
};

} // namespace lab
