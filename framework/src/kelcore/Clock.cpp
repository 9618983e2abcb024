#include <kel/Clock.h>
#include <kel/mutex.h>

#include <windows.h>

namespace kel {

namespace {

struct ClockState {
    mutex lock;
    bool manual = false;
    uint64_t manualMicros = 0;
    uint32_t realSharePercent = 0;
    Clock::SleepObserver observer = nullptr;
    void *observerContext = nullptr;
    Array<uint32_t> sleeps;
};

ClockState &state()
{
    static ClockState instance;
    return instance;
}

uint64_t realMicroseconds()
{
    static LARGE_INTEGER frequency = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return f;
    }();
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return static_cast<uint64_t>(now.QuadPart / frequency.QuadPart) * 1000000ull +
           static_cast<uint64_t>(now.QuadPart % frequency.QuadPart) * 1000000ull / frequency.QuadPart;
}

} // namespace

uint64_t Clock::nowMicroseconds()
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    return s.manual ? s.manualMicros : realMicroseconds();
}

void Clock::useManualClock(bool manual)
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    // The manual clock starts from the real one so elapsed times stay sane across the switch.
    if (manual && !s.manual)
        s.manualMicros = realMicroseconds();
    s.manual = manual;
    s.realSharePercent = 0;
    s.observer = nullptr;
    s.observerContext = nullptr;
    s.sleeps.clear();
}

bool Clock::isManual()
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    return s.manual;
}

void Clock::advanceMilliseconds(uint64_t ms)
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.manualMicros += ms * 1000;
}

Array<uint32_t> Clock::recordedSleeps()
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    return s.sleeps;
}

void Clock::clearRecordedSleeps()
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.sleeps.clear();
}

void Clock::setManualRealShare(uint32_t percent)
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.realSharePercent = percent;
}

void Clock::setManualSleepObserver(SleepObserver observer, void *context)
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.observer = observer;
    s.observerContext = context;
}

namespace detail {

// Called by System::mssleep: true when the manual clock took the sleep; realMs is the part
// of it to wait in real time, and the observer (if any) is to be called outside the lock.
bool sleepOnManualClock(uint32_t milliseconds, uint32_t &realMs, Clock::SleepObserver &observer, void *&context)
{
    ClockState &s = state();
    mutex::scoped_lock guard(s.lock);
    if (!s.manual)
        return false;
    s.sleeps.add(milliseconds);
    s.manualMicros += static_cast<uint64_t>(milliseconds) * 1000;
    realMs = static_cast<uint32_t>(static_cast<uint64_t>(milliseconds) * s.realSharePercent / 100);
    observer = s.observer;
    context = s.observerContext;
    return true;
}

} // namespace detail

} // namespace kel
