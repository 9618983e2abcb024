#include "recording/AviMuxOutputPin.h"

#include "common/BaseFilter.h"

namespace lab {

AviMuxOutputPin::AviMuxOutputPin(BaseFilter &filter) : OutputPin(filter, L"AVI Out") {}

std::vector<MediaType> AviMuxOutputPin::mediaTypes()
{
    AM_MEDIA_TYPE avi = {};
    avi.majortype = MEDIATYPE_Stream;
    avi.subtype = MEDIASUBTYPE_Avi;
    avi.formattype = FORMAT_None;
    avi.lSampleSize = 1;
    return {MediaType(avi)};
}

HRESULT AviMuxOutputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    return IsEqualGUID(type.majortype, MEDIATYPE_Stream) && IsEqualGUID(type.subtype, MEDIASUBTYPE_Avi) ? S_OK
                                                                                                        : S_FALSE;
}

CComPtr<IStream> AviMuxOutputPin::stream()
{
    std::lock_guard<std::recursive_mutex> guard(m_filter.lock());
    CComQIPtr<IStream> writer(m_connected.p);
    return CComPtr<IStream>(writer);
}

// The index and headers are written last, at the start of the file: a writer that cannot seek
// is no use.
HRESULT AviMuxOutputPin::onConnected()
{
    CComQIPtr<IStream> writer(m_connected.p);
    return writer ? S_OK : E_NOINTERFACE;
}

} // namespace lab
