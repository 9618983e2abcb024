#pragma once

#include <kel/Clock.h>
#include <vector>

namespace sorvane {
namespace test {

// Switches kel::Clock to manual time for one test: sleeps return at once and are recorded.
class ManualClock {
public:
    ManualClock() { kel::Clock::useManualClock(true); }
    ~ManualClock() { kel::Clock::useManualClock(false); }
    ManualClock(const ManualClock &) = delete;
    ManualClock &operator=(const ManualClock &) = delete;

    std::vector<uint32_t> sleeps() const
    {
        const kel::Array<uint32_t> recorded = kel::Clock::recordedSleeps();
        return std::vector<uint32_t>(recorded.begin(), recorded.end());
    }
    void advance(uint64_t ms) { kel::Clock::advanceMilliseconds(ms); }
};

} // namespace test
} // namespace sorvane
