#include "CableFrequencyPlan.h"

namespace sorvane {

namespace {

const uint32_t kRaster = 6000;

struct Band {
    int firstChannel;
    int lastChannel;
    uint32_t firstKHz;
};

// Channels 1 and 95-99 sit outside the numeric order of the bands around them.
const Band kBands[] = {
    {1, 1, 73250},    {2, 4, 55250},    {5, 6, 77250},   {7, 13, 175250},
    {14, 22, 121250}, {23, 94, 217250}, {95, 99, 91250}, {100, 134, 649250},
};

struct Plan {
    uint32_t entries[CableFrequencyPlan::kEntries];

    Plan() : entries()
    {
        for (const Band &band : kBands) {
            for (int channel = band.firstChannel; channel <= band.lastChannel; ++channel) {
                entries[channel] = band.firstKHz + static_cast<uint32_t>(channel - band.firstChannel) * kRaster;
            }
        }
    }
};

const Plan &plan()
{
    static const Plan instance;
    return instance;
}

} // namespace

const uint32_t *CableFrequencyPlan::table()
{
    return plan().entries;
}

uint32_t CableFrequencyPlan::frequencyKHz(int channel)
{
    if (channel < 0 || channel >= kEntries)
        return 0;
    return plan().entries[channel];
}

} // namespace sorvane
