#pragma once

#include <kel/Export.h>
#include <cstdint>

namespace kel {

// Measures elapsed time on kel::Clock. Starts running when constructed.
class KEL_API Stopwatch {
public:
    Stopwatch();

    void start();
    void reset();
    void stop();
    bool isRunning() const;
    double elapsedSeconds() const;
    uint64_t elapsedMilliseconds() const;
    uint64_t elapsedMicroseconds() const;

private:
    uint64_t m_startMicros;
    uint64_t m_accumulatedMicros;
    bool m_running;
};

} // namespace kel
