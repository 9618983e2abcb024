// What one frequency of the simulated broadcast carries: its programs and their streams, the
// signal a tuner measures there, and the faults of its transport stream. Read from the
// broadcast description (lab/broadcast.conf); portable, so fuzzers and unit tests can use it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lab {

enum class StreamKind { Video, Audio, Data };

struct ElementaryStream {
    int pid = 0;
    int type = 0; // stream_type of the PMT: 0x02 MPEG-2 video, 0x81 AC-3, 0x03 MPEG-1 audio ...
    StreamKind kind = StreamKind::Data;
};

struct Program {
    int number = 0;
    int pmtPid = 0;
    int minorChannel = -1;
    bool scrambled = false;
    std::vector<ElementaryStream> streams;

    const ElementaryStream *firstOf(StreamKind kind) const;
};

// What the tuner's statistics report while tuned here.
struct SignalValues {
    long strength = 100;
    long quality = 100;
    bool locked = true;
    bool present = true;
};

// Faults of the transport stream; the description's and a device's own add up.
struct StreamFaults {
    bool silence = false;      // signal reported, but no packets
    bool syncLoss = false;     // bytes without sync: no 0x47 every 188 bytes
    int errorPercent = 0;      // this share of packets carries the transport error indicator
    bool noPat = false;        // no program association table
    bool allScrambled = false; // every program scrambled

    void add(const StreamFaults &other);
};

struct Multiplex {
    std::string network;     // atsc, cable, dvb-t, dtmb
    int channel = 0;         // physical channel, shown in the picture
    long frequencyKhz = 0;   // 0: the physical channel's band (atsc)
    std::string modulation;  // 8VSB, 64QAM, 256QAM ...; empty: any
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
