#include "ATSCChannelPlan.h"

namespace sorvane {

namespace {

const uint32_t kRaster = 6000;

struct Band {
    int firstChannel;
    int lastChannel;
    uint32_t firstCentreKHz;
};

// VHF low (54-72 and 76-88 MHz), VHF high (174-216 MHz) and UHF (470-806 MHz).
const Band kBands[] = {
    {2, 4, 57000},
    {5, 6, 79000},
    {7, 13, 177000},
    {14, 69, 473000},
};

} // namespace

uint32_t ATSCChannelPlan::frequencyKHz(int channel)
{
    for (const Band &band : kBands) {
        if (channel >= band.firstChannel && channel <= band.lastChannel) {
            return band.firstCentreKHz + static_cast<uint32_t>(channel - band.firstChannel) * kRaster;
        }
    }
    return 0;
}

} // namespace sorvane
