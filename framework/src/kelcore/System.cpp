#include <kel/Clock.h>
#include <kel/System.h>

#include <windows.h>

namespace kel {

namespace detail {
bool sleepOnManualClock(uint32_t milliseconds, uint32_t &realMs, Clock::SleepObserver &observer, void *&context);
}

void System::mssleep(uint32_t milliseconds)
{
    uint32_t realMs = 0;
    Clock::SleepObserver observer = nullptr;
    void *context = nullptr;
    if (detail::sleepOnManualClock(milliseconds, realMs, observer, context)) {
        // Still yield, so threads that a test waits on get to run.
        Sleep(realMs);
        if (observer)
            observer(milliseconds, context);
        return;
    }
    Sleep(milliseconds);
}

} // namespace kel
