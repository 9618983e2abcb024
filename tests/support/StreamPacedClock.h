// The manual clock for tests on the lab's digital cards: each sleep of the library returns once
// the lab's transport streams have begun a number of sample periods that grows with the
// sleep's length (one more than a period per 100 ms asked), so what a sleep lets arrive arrives
// however slow or loaded the machine is. Without a running stream a sleep returns at once.
#pragma once

#include "ManualClock.h"

#include <lab/LabControl.h>

#include <windows.h>

namespace sorvane {
namespace test {

class StreamPacedClock : public ManualClock {
public:
    StreamPacedClock() { kel::Clock::setManualSleepObserver(&StreamPacedClock::waitForPeriods, nullptr); }

    // Sample periods one sleep of this length waits for.
    static long long periodsFor(uint32_t milliseconds) { return 1 + (milliseconds + 99) / 100; }

private:
    static void waitForPeriods(uint32_t milliseconds, void *)
    {
        // A period counts once the one after it began: then all it had was delivered.
        const long long wanted = LabTransportPeriods() + periodsFor(milliseconds) + 1;
        // The limit only keeps a broken lab from hanging the program; nothing is timed by it.
        const ULONGLONG giveUpAt = GetTickCount64() + 30000;
        while (LabTransportStreams() > 0 && LabTransportPeriods() < wanted && GetTickCount64() < giveUpAt)
            Sleep(1);
    }
};

} // namespace test
} // namespace sorvane
