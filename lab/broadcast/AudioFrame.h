// The audio of every lab program: a steady 1 kHz tone, 48 kHz mono, as AC-3 (stream_type 0x81,
// the North American systems) or as MPEG-1 layer II (0x03, DVB-T and DTMB), one frame repeated.
#pragma once

#include <cstdint>
#include <vector>

namespace lab {

class AudioFrame {
public:
    static const int kAc3 = 0x81;

    // One frame of the tone in the stream type's coding (layer II for any type but AC-3).
    static std::vector<std::uint8_t> tone(int streamType);
    // Seconds one frame plays: 32 ms of AC-3, 24 ms of layer II.
    static double period(int streamType);
    // The PES stream_id: private_stream_1 for AC-3, the first MPEG audio stream otherwise.
    static int streamId(int streamType);
};

} // namespace lab
