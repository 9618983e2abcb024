#include "ChannelStream.h"
#include "SampleCallback.h"

namespace sorvane {

namespace {
const int32_t kNoMark = -1;
} // namespace

ChannelStream::ChannelStream() : m_found(false), m_mark(kNoMark), m_durationMs(0.0) {}

void ChannelStream::clear()
{
    m_found = false;
    m_mark = kNoMark;
    m_bytes.clear();
    m_durationMs = 0.0;
}

void ChannelStream::markFound(SampleCallback &buffer)
{
    m_mark = buffer.bytesReceived();
    m_watch.reset();
}

void ChannelStream::take(SampleCallback &buffer)
{
    const bool found = m_mark != kNoMark;
    const int32_t from = found ? m_mark : 0;
    const double elapsedMs = static_cast<double>(m_watch.elapsedMilliseconds());
    m_mark = kNoMark;
    const int32_t received = buffer.bytesReceived() - from;
    m_found = found;
    m_bytes.clear();
    m_durationMs = 0.0;
    if (received <= 0)
        return;
    m_bytes.resize(static_cast<size_t>(received < kKeptBytes ? received : kKeptBytes));
    const int32_t copied = buffer.copyReceived(from, m_bytes.data(), static_cast<int32_t>(m_bytes.size()));
    m_bytes.resize(static_cast<size_t>(copied > 0 ? copied : 0));
    // The bytes kept are the first ones, so their share of the time is the share of the bytes.
    if (found)
        m_durationMs = elapsedMs * static_cast<double>(m_bytes.size()) / static_cast<double>(received);
}

} // namespace sorvane
