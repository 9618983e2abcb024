#include <kel/System.h>

#include <windows.h>

namespace kel {

namespace detail {
bool sleepOnManualClock(uint32_t milliseconds);
}

void System::mssleep(uint32_t milliseconds)
{
    if (detail::sleepOnManualClock(milliseconds)) {
        // Still yield, so threads that a test waits on get to run.
        Sleep(0);
        return;
    }
    Sleep(milliseconds);
}

} // namespace kel
