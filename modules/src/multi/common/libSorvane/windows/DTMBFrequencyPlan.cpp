#include "DTMBFrequencyPlan.h"

namespace sorvane {

namespace {

const uint32_t kRaster = 8000;
const int kLowBandLast = 24;
const uint32_t kLowBandStart = 474000;
const uint32_t kHighBandStart = 610000;
const int kHighBandFirst = 25;

struct Plan {
    uint32_t entries[DTMBFrequencyPlan::kLastChannel + 1];

    Plan() : entries()
    {
        for (int channel = DTMBFrequencyPlan::kFirstChannel; channel <= DTMBFrequencyPlan::kLastChannel; ++channel) {
            entries[channel] =
                channel <= kLowBandLast
                    ? kLowBandStart + static_cast<uint32_t>(channel - DTMBFrequencyPlan::kFirstChannel) * kRaster
                    : kHighBandStart + static_cast<uint32_t>(channel - kHighBandFirst) * kRaster;
        }
    }
};

} // namespace

const uint32_t *DTMBFrequencyPlan::table()
{
    static const Plan instance;
    return instance.entries;
}

} // namespace sorvane
