// The DTMB (DMB-TH) channel plan, channels 13 to 56 in kHz, 8 MHz apart, with a gap of
// 48 MHz between channels 24 (562000) and 25 (610000).
#pragma once

#include "SorvaneExport.h"

#include <cstdint>

namespace sorvane {

class SORVANE_API DTMBFrequencyPlan {
public:
    static const int kFirstChannel = 13;
    static const int kLastChannel = 56;

    // The table indexed by channel number, 0 to 56; entries below 13 are 0.
    static const uint32_t *table();
};

} // namespace sorvane
