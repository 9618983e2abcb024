// Cuts PSI sections and PES packets into 188-byte transport-stream packets: sync byte, PID,
// payload-unit-start flag, a continuity counter per PID, adaptation fields for a PCR or for
// stuffing the last packet of a PES packet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace lab {

class TsPacketizer {
public:
    static const std::size_t kPacketSize = 188;
    static const int kNullPid = 0x1FFF;

    // A section after a pointer field of 0, the rest of its last packet stuffed with 0xFF.
    void section(int pid, const std::vector<std::uint8_t> &section, std::vector<std::uint8_t> &out);
    // A PES packet; pcr >= 0 (27 MHz units) puts a PCR into the first packet. A scrambled one
    // carries transport_scrambling_control '10' and a payload no one can read.
    void pes(int pid, const std::vector<std::uint8_t> &pes, long long pcr, bool scrambled,
             std::vector<std::uint8_t> &out);
    static void nullPacket(std::vector<std::uint8_t> &out);
    // Writes pcr into the PCR field of a packet that has one; false when it has none.
    static bool stampPcr(std::uint8_t *packet, long long pcr);

private:
    struct PacketSpec {
        int pid;
        bool unitStart;
        bool scrambled;
        long long pcr;            // < 0: none
        bool stuffWithAdaptation; // PES: an adaptation field pads a short payload; sections: 0xFF after it
    };

    int nextCounter(int pid);
    void packet(const PacketSpec &header, const std::uint8_t *payload, std::size_t length,
                std::vector<std::uint8_t> &out);

    std::map<int, int> m_counters;
    std::uint32_t m_noise = 0x12345678u;
};

} // namespace lab
