#include "common/TransformFilter.h"

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

} // namespace lab
