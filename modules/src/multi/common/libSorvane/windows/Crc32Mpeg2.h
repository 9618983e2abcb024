// The CRC-32 of MPEG-2 sections (polynomial 0x04C11DB7, initial value all ones, no
// reflection, no final inversion). Over a whole section including its CRC field it is 0.
#pragma once

#include "SorvaneExport.h"

#include <cstdint>

namespace sorvane {

class SORVANE_API Crc32Mpeg2 {
public:
    static uint32_t compute(const unsigned char *data, int length);
};

} // namespace sorvane
