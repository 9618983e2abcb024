#include "FrameCollector.h"

namespace labtest {

STDMETHODIMP FrameCollector::SampleCB(double, IMediaSample *sample)
{
    CollectedSample copy;
    BYTE *data = nullptr;
    if (SUCCEEDED(sample->GetPointer(&data)) && data)
        copy.data.assign(data, data + sample->GetActualDataLength());
    copy.timed = SUCCEEDED(sample->GetTime(&copy.start, &copy.end));
    std::lock_guard<std::mutex> guard(m_lock);
    m_samples.push_back(std::move(copy));
    return S_OK;
}

STDMETHODIMP FrameCollector::BufferCB(double, BYTE *, long)
{
    return E_NOTIMPL;
}

size_t FrameCollector::count() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_samples.size();
}

std::vector<CollectedSample> FrameCollector::samples() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_samples;
}

} // namespace labtest
