#include <kel/Stopwatch.h>
#include <kel/Clock.h>

namespace kel {

Stopwatch::Stopwatch() : m_startMicros(Clock::nowMicroseconds()), m_accumulatedMicros(0), m_running(true) {}

void Stopwatch::start()
{
    if (m_running)
        return;
    m_startMicros = Clock::nowMicroseconds();
    m_running = true;
}

void Stopwatch::reset()
{
    m_accumulatedMicros = 0;
    m_startMicros = Clock::nowMicroseconds();
    m_running = true;
}

void Stopwatch::stop()
{
    if (!m_running)
        return;
    m_accumulatedMicros += Clock::nowMicroseconds() - m_startMicros;
    m_running = false;
}

bool Stopwatch::isRunning() const
{
    return m_running;
}

double Stopwatch::elapsedSeconds() const
{
    return static_cast<double>(elapsedMicroseconds()) / 1e6;
}

uint64_t Stopwatch::elapsedMilliseconds() const
{
    return elapsedMicroseconds() / 1000;
}

uint64_t Stopwatch::elapsedMicroseconds() const
{
    uint64_t total = m_accumulatedMicros;
    if (m_running) {
        const uint64_t now = Clock::nowMicroseconds();
        // A clock switched back from manual may read earlier than the start.
        if (now > m_startMicros)
            total += now - m_startMicros;
    }
    return total;
}

} // namespace kel
