// Finds the next synchronised packet in a block of received transport-stream bytes: a sync
// byte that three more follow at 188-byte spacing. Bytes before it are skipped as noise. It
// only looks at bytes below the write count, and wants more than 600 of them past the read
// position, so that all four sync bytes are there.
#pragma once

#include "SorvaneExport.h"

#include <cstddef>
#include <cstdint>

namespace sorvane {

class SORVANE_API TsPacketSearch {
public:
    // Bytes past the read position needed before a packet is taken.
    static const int32_t kLookAhead = 600;

    // Copies the packet found into `packet` (188 bytes) and moves the read position past
    // it; otherwise moves the read position over the bytes ruled out and returns false.
    static bool findPacket(const unsigned char *data, int32_t &readPosition, int32_t writeCount, unsigned char *packet);
};

} // namespace sorvane
