#include <kel/System.h>

#include <windows.h>

namespace kel {

namespace detail {
bool sleepOnManualClock(uint32_t milliseconds, uint32_t &realMs);
}

void System::mssleep(uint32_t milliseconds)
{
    uint32_t realMs = 0;
    if (detail::sleepOnManualClock(milliseconds, realMs)) {
        // Still yield, so threads that a test waits on get to run.
        Sleep(realMs);
        return;
    }
    Sleep(milliseconds);
}

} // namespace kel
