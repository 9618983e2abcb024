// What a test reads out of received transport-stream bytes, parsed independently of the lab's
// generator: packets and their sync, continuity per PID, error and scrambling bits, the PAT and
// PMT sections with their CRC-32, and the lab's picture labels in MPEG-2 video PES packets.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace labtest {

struct TsProgram {
    int number = 0;
    int pmtPid = 0;
    bool mapSeen = false;
    bool caDescriptor = false;
    int pcrPid = 0;
    std::map<int, int> streams; // PID -> stream_type
};

struct TsPicture {
    int pid = 0;
    int channel = -1;
    int program = -1;
    unsigned long frame = 0;
};

class TransportStreamCheck {
public:
    explicit TransportStreamCheck(const std::vector<std::uint8_t> &bytes);

    size_t packets() const { return m_packets; }
    // Packets whose first byte is not 0x47 (counted at multiples of 188).
    size_t outOfSync() const { return m_outOfSync; }
    size_t errorPackets() const { return m_errors; }
    size_t scrambledPackets() const { return m_scrambled; }
    size_t continuityErrors() const { return m_continuityErrors; }
    size_t badCrcs() const { return m_badCrcs; }
    size_t patSections() const { return m_patSections; }
    int transportStreamId() const { return m_tsid; }
    const std::map<int, TsProgram> &programs() const { return m_programs; }
    const std::vector<TsPicture> &pictures() const { return m_pictures; }

    static bool crcHolds(const std::uint8_t *section, size_t length);

private:
    void packet(const std::uint8_t *p);
    void section(int pid, const std::vector<std::uint8_t> &data);
    void pesPayload(int pid, const std::vector<std::uint8_t> &pes);

    size_t m_packets = 0;
    size_t m_outOfSync = 0;
    size_t m_errors = 0;
    size_t m_scrambled = 0;
    size_t m_continuityErrors = 0;
    size_t m_badCrcs = 0;
    size_t m_patSections = 0;
    int m_tsid = -1;
    std::map<int, int> m_counters;
    std::map<int, std::vector<std::uint8_t>> m_units; // PID -> bytes of the unit being gathered
    std::map<int, TsProgram> m_programs;
    std::vector<TsPicture> m_pictures;
};

} // namespace labtest
