#include "SampleGrabberCallback.h"
#include "CaptureLog.h"
#include "LogTexts.h"

#include <boost/checked_delete.hpp>
#include <cstring>
#include <new>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

SampleGrabberCallback::SampleGrabberCallback(uint64_t captureDelay, uint64_t wantedFrames)
    : m_firstSample(true), m_captureDelay(captureDelay), m_refCount(0), m_wantedFrames(wantedFrames), m_samplesSeen(0),
      m_frameCount(0)
{
    SORVANE_LOG_DETAIL("SampleGrabberCallback ctor, captureDelay = " << static_cast<unsigned long long>(captureDelay));
}

SampleGrabberCallback::~SampleGrabberCallback()
{
    SORVANE_LOG_DETAIL("~SampleGrabberCallback");
}

STDMETHODIMP SampleGrabberCallback::QueryInterface(REFIID, void **object)
{
    if (!object)
        return E_POINTER;
    *object = static_cast<ISampleGrabberCB *>(this);
    return S_OK;
}

STDMETHODIMP_(ULONG) SampleGrabberCallback::AddRef()
{
    const LONG count = InterlockedIncrement(&m_refCount);
    SORVANE_LOG_DETAIL("SampleGrabberCallback::AddRef -> " << count);
    return static_cast<ULONG>(count);
}

STDMETHODIMP_(ULONG) SampleGrabberCallback::Release()
{
    const LONG count = InterlockedDecrement(&m_refCount);
    SORVANE_LOG_DETAIL("SampleGrabberCallback::Release -> " << count);
    if (count == 0) {
        SORVANE_LOG_DETAIL("SampleGrabberCallback::Release, deleting this");
        delete this;
    }
    return static_cast<ULONG>(count);
}

STDMETHODIMP SampleGrabberCallback::SampleCB(double, IMediaSample *sample)
{
    if (m_firstSample) {
        m_firstSample = false;
        m_stopwatch.reset();
    }
    ++m_samplesSeen;
    // The first moments of video are dropped while the camera's exposure settles.
    if (m_stopwatch.elapsedMilliseconds() < m_captureDelay || m_frames.size() >= m_wantedFrames)
        return S_OK;
    return keepFrame(sample) ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP SampleGrabberCallback::BufferCB(double, BYTE *, long)
{
    return E_NOTIMPL;
}

bool SampleGrabberCallback::keepFrame(IMediaSample *sample)
{
    BYTE *data = nullptr;
    if (FAILED(sample->GetPointer(&data))) {
        SORVANE_LOG_DETAIL("IMediaSample::GetPointer failed.");
        return true;
    }
    const long length = sample->GetActualDataLength();
    if (length <= 0) {
        SORVANE_LOG_DETAIL(LogTexts::EMPTY_SAMPLE);
        return true;
    }
    unsigned char *copy = new (std::nothrow) unsigned char[length];
    if (!copy) {
        SORVANE_LOG_ERROR("no memory for a frame of " << length << " bytes");
        return false;
    }
    std::memcpy(copy, data, static_cast<size_t>(length));
    try {
        // The frame is freed with the last shared_ptr that holds it, also if this throws.
        m_frames.push_back(boost::shared_ptr<unsigned char>(copy, boost::checked_array_deleter<unsigned char>()));
    } catch (const std::bad_alloc &) {
        SORVANE_LOG_ERROR("no memory to keep frame " << static_cast<unsigned long long>(m_frames.size()));
        return false;
    }
    m_frameCount.store(m_frames.size());
    return true;
}

} // namespace sorvane
