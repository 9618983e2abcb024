// A digital channel as a person looks it up: the physical channel and its frequency, beside the
// number the library scanned it by (a DVB-T country's list position, an OpenCable virtual
// channel).
#pragma once

#include "CaptureClasses.h"

#include <cstdint>
#include <string>

namespace sorvane {
namespace diag {

class ChannelName {
public:
    struct Place {
        std::wstring physical; // "UHF channel 21", "cable channel 2"; empty when unknown
        uint32_t frequencyKHz; // 0 when unknown
        std::wstring text;     // the whole description for a sentence
    };

    static Place of(CaptureClasses::DigitalKind kind, int channel, const CaptureClasses::StreamReport &stream);
    // "474.0 MHz", "55.25 MHz".
    static std::wstring megahertz(uint32_t kHz);

private:
    static Place terrestrialDvb(uint32_t kHz);
    static Place atsc(int channel);
    static Place cable(int channel);
    static Place dtmb(int channel, uint32_t kHz);
};

} // namespace diag
} // namespace sorvane
