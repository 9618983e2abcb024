// Builds MPEG-2 transport streams for tests and fuzz seeds: PAT and PMT sections with their
// CRC, split into packets, and elementary-stream packets clear or scrambled. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace sorvane {
namespace test {

typedef std::vector<uint8_t> Bytes;

struct TsProgram {
    uint16_t number;
    uint16_t pmtPid;
};

struct TsElementaryStream {
    uint8_t streamType;
    uint16_t pid;
    bool conditionalAccess;
};

class TsStreamBuilder {
public:
    static const int kPacketSize = 188;

    // A long-form section: header, body, CRC-32.
    static Bytes section(uint8_t tableId, uint16_t extension, int version, bool current, int number, int last,
                         const Bytes &body);
    static Bytes pat(const std::vector<TsProgram> &programs, int version = 0, bool current = true, int number = 0,
                     int last = 0);
    // `descriptorPadding` adds that many bytes of private descriptors to the program info,
    // so that the section spans packets.
    static Bytes pmt(uint16_t program, const std::vector<TsElementaryStream> &streams, bool programCa = false,
                     int version = 0, int descriptorPadding = 0);

    // Appends the section in packets of `pid`, the first with the unit-start flag and a
    // pointer field of 0, the last padded with 0xFF.
    TsStreamBuilder &addSection(uint16_t pid, const Bytes &section);
    // One payload packet of an elementary stream.
    TsStreamBuilder &addPayload(uint16_t pid, bool scrambled);
    TsStreamBuilder &addPacket(const Bytes &packet);
    // One packet; the payload is padded with 0xFF to the packet's end.
    static Bytes packet(uint16_t pid, bool unitStart, int continuity, const Bytes &payload, bool error = false,
                        int scrambling = 0);

    const Bytes &bytes() const { return m_bytes; }
    int nextContinuity(uint16_t pid);

private:
    Bytes m_bytes;
    std::map<uint16_t, int> m_continuity;
};

} // namespace test
} // namespace sorvane
