// What one frequency of the simulated broadcast carries: its programs and their streams, the
// signal a tuner measures there, and the faults of its transport stream. Read from the
// broadcast description (lab/broadcast.conf); portable, so fuzzers and unit tests can use it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "broadcast/Program.h"
#include "broadcast/StreamFaults.h"

namespace lab {

// What the tuner's statistics report while tuned here.
struct SignalValues {
    long strength = 100;
    long quality = 100;
    bool locked = true;
    bool present = true;
};

struct Multiplex {
    std::string network;    // atsc, cable, dvb-t, dtmb
    int channel = 0;        // physical channel, shown in the picture
    long frequencyKhz = 0;  // 0: the physical channel's band (atsc)
    std::string modulation; // 8VSB, 64QAM, 256QAM ...; empty: any
    int transportStreamId = 0;
    int width = 320;
    int height = 240;
    std::vector<Program> programs;
    SignalValues signal;
    StreamFaults faults;
    std::int32_t refuseTune = 0; // a tune here fails with this HRESULT (0: accepted)
    int line = 0;

    // A tune to kHz receives this multiplex: within 250 kHz of its frequency, or inside its
    // ATSC channel's 6 MHz band when it names no frequency.
    bool receives(long kHz) const;
    // A demodulator set to this modulation locks (not set or empty matches any).
    bool locksWith(const std::string &tunedModulation) const;
};

} // namespace lab
