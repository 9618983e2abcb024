#include "demux/DemuxOutputPin.h"

#include <cstring>

namespace lab {

DemuxOutputPin::DemuxOutputPin(BaseFilter &filter, const std::wstring &name, const MediaType &type, long bufferBytes)
    : OutputPin(filter, name), m_offered(type), m_bufferBytes(bufferBytes)
{
}

HRESULT DemuxOutputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    return IsEqualGUID(type.majortype, m_offered->majortype) && IsEqualGUID(type.subtype, m_offered->subtype) ? S_OK
                                                                                                              : S_FALSE;
}

void DemuxOutputPin::deliverUnit(const std::vector<std::uint8_t> &unit, bool discontinuity)
{
    if (!isConnected() || unit.empty())
        return;
    CComPtr<IMediaSample> sample;
    BYTE *buffer = nullptr;
    if (FAILED(getBuffer(sample, buffer)) || static_cast<long>(unit.size()) > sample->GetSize())
        return;
    std::memcpy(buffer, unit.data(), unit.size());
    sample->SetActualDataLength(static_cast<long>(unit.size()));
    sample->SetTime(nullptr, nullptr);
    sample->SetSyncPoint(TRUE);
    sample->SetDiscontinuity(discontinuity ? TRUE : FALSE);
    deliver(sample);
}

} // namespace lab
