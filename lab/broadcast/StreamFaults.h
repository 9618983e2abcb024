// Faults of a transport stream; the broadcast description's and a device's own add up.
#pragma once

namespace lab {

struct StreamFaults {
    bool silence = false;      // signal reported, but no packets
    bool syncLoss = false;     // bytes without sync: no 0x47 every 188 bytes
    int errorPercent = 0;      // this share of packets carries the transport error indicator
    bool noPat = false;        // no program association table
    bool allScrambled = false; // every program scrambled

    void add(const StreamFaults &other);
};

} // namespace lab
