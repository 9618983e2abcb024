// The transport stream of one multiplex as a demodulator would hand it on, packet slot by
// packet slot at the multiplex's bit rate: PAT and PMTs every 100 ms, a video picture per
// program every 1/29.97 s (MpegVideoFrame; PES with PTS, a PCR of its arrival in its first
// packet), an audio frame per program every 32 ms (AC-3) or 24 ms (layer II; AudioFrame),
// null packets in between. Faults change what comes out: nothing (silence), noise without sync
// bytes (sync loss), the transport error bit on a share of packets, no PAT, scrambled programs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "broadcast/MpegVideoFrame.h"
#include "broadcast/Multiplex.h"
#include "broadcast/TsPacketizer.h"

namespace lab {

class TransportStreamGenerator {
public:
    TransportStreamGenerator(const Multiplex &multiplex, long bitsPerSecond);

    // The device's own faults, added to the multiplex's for the packets that follow.
    void setFaults(const StreamFaults &deviceFaults);
    // Appends the bytes of the next `slots` packet slots (none while silent).
    void generate(std::size_t slots, std::vector<std::uint8_t> &out);

    unsigned long framesQueued() const { return m_frame; }

private:
    void queueDue(double seconds);
    void queueTables();
    void queuePictures(double seconds);
    void queueAudio(double seconds);
    bool isScrambled(const Program &program) const;
    void emitPacket(double seconds, std::vector<std::uint8_t> &out);
    void emitNoise(std::vector<std::uint8_t> &out);

    const Multiplex m_multiplex;
    const long m_bitsPerSecond;
    StreamFaults m_faults;
    TsPacketizer m_packetizer;
    MpegVideoFrame m_pictures;
    std::vector<std::uint8_t> m_queue;
    std::size_t m_queueRead = 0;
    unsigned long long m_slot = 0;
    unsigned long long m_emitted = 0;
    double m_nextTables = 0;
    double m_nextPicture = 0;
    double m_nextAudio = 0;
    const double m_audioPeriod;
    unsigned long m_frame = 0;
    std::uint32_t m_noise = 0x9E3779B9u;
};

} // namespace lab
