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
};

} // namespace kel
