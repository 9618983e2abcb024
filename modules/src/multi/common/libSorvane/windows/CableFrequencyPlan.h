// The North American cable channel plan (EIA/CEA-542 standard plan): each channel's visual
// carrier in kHz, indexed by channel number; entry 0 is 0.
#pragma once

#include "SorvaneExport.h"

#include <cstdint>

namespace sorvane {

class SORVANE_API CableFrequencyPlan {
public:
    static const int kEntries = 135;

    // The whole table; index it with a channel from 0 to 134.
    static const uint32_t *table();
    // 0 outside the table.
    static uint32_t frequencyKHz(int channel);
};

} // namespace sorvane
