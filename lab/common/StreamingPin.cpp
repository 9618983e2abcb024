#include "common/StreamingPin.h"

namespace lab {

StreamingPin::StreamingPin(BaseFilter &filter, const std::wstring &name, const GUID &category)
    : OutputPin(filter, name, category)
{
}

StreamingPin::~StreamingPin() = default;

void StreamingPin::startStreaming()
{
    if (!canStream())
        return;
    m_delivering = true;
    if (m_thread.running())
        return;
    streamStarting();
    m_thread.start([this](HANDLE stopEvent) {
        stream(stopEvent);
        streamEnded();
    });
}

void StreamingPin::pauseStreaming()
{
    m_delivering = false;
}

void StreamingPin::stopStreaming()
{
    m_delivering = false;
    m_thread.stop();
}

StreamingPin::Pace::Pace(double periodMs) : m_periodMs(periodMs), m_frequency(), m_begin()
{
    QueryPerformanceFrequency(&m_frequency);
    QueryPerformanceCounter(&m_begin);
}

bool StreamingPin::Pace::waitFor(unsigned long index, HANDLE stopEvent) const
{
    const double dueMs = static_cast<double>(index) * m_periodMs;
    const double elapsed = elapsedMs();
    const DWORD wait = dueMs > elapsed ? static_cast<DWORD>(dueMs - elapsed) : 0;
    return WaitForSingleObject(stopEvent, wait) != WAIT_OBJECT_0;
}

double StreamingPin::Pace::elapsedMs() const
{
    LARGE_INTEGER now = {};
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart - m_begin.QuadPart) * 1000.0 / static_cast<double>(m_frequency.QuadPart);
}

} // namespace lab
