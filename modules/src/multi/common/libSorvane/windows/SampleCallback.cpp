#include "SampleCallback.h"
#include "CaptureLog.h"
#include "TsPacketSearch.h"

#include <kel/System.h>
#include <cstring>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

const int kSearchPasses = 5;
const uint32_t kPassDelay = 100;

} // namespace

// m_data is deliberately left uninitialised: its pages are only touched as bytes arrive.
SampleCallback::SampleCallback() : m_refCount(0), m_readPosition(0), m_writeCount(0) {}

SampleCallback::~SampleCallback()
{
    SORVANE_LOG_DETAIL("~SampleCallback");
}

STDMETHODIMP SampleCallback::QueryInterface(REFIID iid, void **object)
{
    if (!object)
        return E_POINTER;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(ISampleGrabberCB)) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<ISampleGrabberCB *>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) SampleCallback::AddRef()
{
    return static_cast<ULONG>(InterlockedIncrement(&m_refCount));
}

STDMETHODIMP_(ULONG) SampleCallback::Release()
{
    const LONG count = InterlockedDecrement(&m_refCount);
    if (count == 0)
        delete this;
    return static_cast<ULONG>(count);
}

STDMETHODIMP SampleCallback::SampleCB(double, IMediaSample *)
{
    return E_NOTIMPL;
}

STDMETHODIMP SampleCallback::BufferCB(double, BYTE *buffer, long length)
{
    kel::mutex::scoped_lock lock(m_lock);
    SORVANE_LOG_DETAIL("BufferCB sees " << length << " bytes");
    if (buffer && length > 0 && static_cast<int64_t>(m_writeCount) + length < kCapacity) {
        std::memcpy(m_data + m_writeCount, buffer, static_cast<size_t>(length));
        m_writeCount += static_cast<int32_t>(length);
    }
    return S_OK;
}

bool SampleCallback::getNextPacket(unsigned char *packet)
{
    SORVANE_LOG_DETAIL("getNextPacket");
    for (int pass = 0; pass < kSearchPasses; ++pass) {
        {
            kel::mutex::scoped_lock lock(m_lock);
            if (TsPacketSearch::findPacket(m_data, m_readPosition, m_writeCount, packet)) {
                SORVANE_LOG_DETAIL("packet is valid");
                return true;
            }
        }
        kel::System::mssleep(kPassDelay);
    }
    return false;
}

void SampleCallback::reset()
{
    kel::mutex::scoped_lock lock(m_lock);
    m_readPosition = 0;
    m_writeCount = 0;
}

int32_t SampleCallback::bytesReceived()
{
    kel::mutex::scoped_lock lock(m_lock);
    return m_writeCount;
}

int32_t SampleCallback::copyReceived(int32_t from, unsigned char *out, int32_t length)
{
    kel::mutex::scoped_lock lock(m_lock);
    if (from < 0 || from >= m_writeCount)
        return 0;
    const int32_t available = m_writeCount - from;
    const int32_t count = length < available ? length : available;
    if (count > 0)
        std::memcpy(out, m_data + from, static_cast<size_t>(count));
    return count;
}

} // namespace sorvane
