// The transport-stream faults a test sets on a simulated BDA device, on top of what the
// broadcast description says of the multiplex:
//   fault.silence = yes      no packets, though the statistics may report a signal
//   fault.syncloss = yes     noise without sync bytes
//   fault.errors = PERCENT   that share of packets carries the transport error indicator
//   fault.nopat = yes        no program association table
//   fault.scrambled = yes    every program scrambled
#pragma once

#include "broadcast/Multiplex.h"

namespace lab {

class DeviceState;

class StreamFaultKeys {
public:
    static StreamFaults read(const DeviceState &device);
};

} // namespace lab
