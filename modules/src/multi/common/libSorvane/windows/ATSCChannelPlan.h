// The North American terrestrial (ATSC) channel plan: the centre frequency in kHz of each
// 6 MHz channel from 2 to 69.
#pragma once

#include "SorvaneExport.h"

#include <cstdint>

namespace sorvane {

class SORVANE_API ATSCChannelPlan {
public:
    static const int kFirstChannel = 2;
    static const int kLastChannel = 69;

    // 0 for a channel outside 2 ... 69.
    static uint32_t frequencyKHz(int channel);
};

} // namespace sorvane
