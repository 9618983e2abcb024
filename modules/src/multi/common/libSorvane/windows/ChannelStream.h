// The transport stream of the channel a digital scan ended on, as the packet buffer received
// it: from the moment the channel was found until the graph stopped (the time it stayed on
// screen), or, when no channel was found, what the last channel tried delivered.
#pragma once

#include "SorvaneExport.h"

#include <kel/Stopwatch.h>

#include <cstdint>
#include <vector>

namespace sorvane {

class SampleCallback;

class SORVANE_API ChannelStream {
public:
    // At most this much of the stream is kept (and measured).
    static const int32_t kKeptBytes = 16 * 1024 * 1024;

    ChannelStream();

    // Forgets what was kept.
    void clear();
    // The scan found its channel: what the buffer receives from now on belongs to it.
    void markFound(SampleCallback &buffer);
    // After the graph stopped: keeps the found channel's bytes, or the last channel's.
    void take(SampleCallback &buffer);

    bool found() const { return m_found; }
    const std::vector<unsigned char> &bytes() const { return m_bytes; }
    // How long the found channel's kept bytes took to arrive; 0 when unknown.
    double durationMs() const { return m_durationMs; }

private:
    bool m_found;
    int32_t m_mark;
    kel::Stopwatch m_watch;
    std::vector<unsigned char> m_bytes;
    double m_durationMs;
};

} // namespace sorvane
