#pragma once

#include <kel/Export.h>
#include <kel/Array.h>
#include <cstdint>

namespace kel {

// The one clock behind Stopwatch and System::mssleep. Real time by default; a test may
// switch to a manual clock that only moves when advanced or slept on, and read back
// every sleep that was asked for.
class KEL_API Clock {
public:
    static uint64_t nowMicroseconds();

    static void useManualClock(bool manual);
    static bool isManual();
    static void advanceMilliseconds(uint64_t ms);
    // Sleeps asked for (in ms) since the manual clock was switched on or last cleared.
    static Array<uint32_t> recordedSleeps();
    static void clearRecordedSleeps();
    // On the manual clock, each sleep also waits this percentage of its length in real time
    // (0, the default, returns at once), so that threads fed in real time (a device's
    // stream) deliver while the clock jumps. Reset when the manual clock is switched.
    static void setManualRealShare(uint32_t percent);
    // On the manual clock, called on the sleeping thread after each sleep was recorded, with
    // its length: a test waits there for what the sleep is meant to let happen (a device's
    // stream arriving) rather than for a share of real time. Reset when the clock is switched.
    typedef void (*SleepObserver)(uint32_t milliseconds, void *context);
    static void setManualSleepObserver(SleepObserver observer, void *context);
};

} // namespace kel
