#include "common/TransformFilter.h"

#include <cstdlib>

#include <uuids.h>

namespace lab {

TransformFilter::TransformFilter(const CLSID &clsid) : BaseFilter(clsid), m_input(*this), m_output(*this) {}

BasePin *TransformFilter::pin(int index)
{
    if (index == 0)
        return &m_input;
    return index == 1 ? &m_output : nullptr;
}

HRESULT TransformFilter::receive(IMediaSample *sample)
{
    if (!m_output.isConnected())
        return S_OK;
    BYTE *in = nullptr;
    if (FAILED(sample->GetPointer(&in)))
        return S_OK;
    CComPtr<IMediaSample> result;
    BYTE *out = nullptr;
    HRESULT hr = m_output.getBuffer(result, out);
    if (FAILED(hr))
        return hr;
    const long length = transform(in, sample->GetActualDataLength(), out, result->GetSize());
    if (length <= 0)
        return S_OK;
    result->SetActualDataLength(length);
    REFERENCE_TIME start = 0;
    REFERENCE_TIME end = 0;
    const HRESULT timed = sample->GetTime(&start, &end);
    if (SUCCEEDED(timed))
        result->SetTime(&start, timed == VFW_S_NO_STOP_TIME ? nullptr : &end);
    LONGLONG mediaStart = 0;
    LONGLONG mediaEnd = 0;
    if (SUCCEEDED(sample->GetMediaTime(&mediaStart, &mediaEnd)))
        result->SetMediaTime(&mediaStart, &mediaEnd);
    result->SetSyncPoint(TRUE);
    result->SetDiscontinuity(sample->IsDiscontinuity() == S_OK ? TRUE : FALSE);
    return m_output.deliver(result);
}

bool TransformFilter::isVideoInfo(const AM_MEDIA_TYPE &type)
{
    return IsEqualGUID(type.majortype, MEDIATYPE_Video) && IsEqualGUID(type.formattype, FORMAT_VideoInfo) &&
           type.cbFormat >= sizeof(VIDEOINFOHEADER) && type.pbFormat;
}

bool TransformFilter::isRgbVideoInfo(const AM_MEDIA_TYPE &type)
{
    return isVideoInfo(type) &&
           (IsEqualGUID(type.subtype, MEDIASUBTYPE_RGB32) || IsEqualGUID(type.subtype, MEDIASUBTYPE_RGB24));
}

HRESULT TransformFilter::checkRgbFrame(const BITMAPINFOHEADER &input, const AM_MEDIA_TYPE &output)
{
    const BITMAPINFOHEADER &out = reinterpret_cast<const VIDEOINFOHEADER *>(output.pbFormat)->bmiHeader;
    const WORD bits = IsEqualGUID(output.subtype, MEDIASUBTYPE_RGB32) ? 32 : 24;
    if (out.biWidth != input.biWidth || std::labs(out.biHeight) != std::labs(input.biHeight) ||
        out.biBitCount != bits || out.biCompression != BI_RGB)
        return VFW_E_TYPE_NOT_ACCEPTED;
    return S_OK;
}

} // namespace lab
