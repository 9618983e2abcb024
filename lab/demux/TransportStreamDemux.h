// The demultiplexing of an MPEG-2 transport stream, free of DirectShow: packets resynchronised
// across sample boundaries, damaged (transport error bit), scrambled and discontinuous data
// dropped, PSI sections gathered and checked by their CRC-32, PES packets gathered and
// stripped to their elementary-stream payload. The PIDs that reach the video and audio outputs
// follow the tables: the first program of the PAT whose PMT lists MPEG-2 video and announces
// no conditional access gives its first video and first audio stream.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace lab {

struct DemuxUnit {
    enum class Kind { Section, Video, Audio };
    Kind kind = Kind::Section;
    std::vector<std::uint8_t> data;
};

class TransportStreamDemux {
public:
    // Appends the units completed by these bytes.
    void feed(const std::uint8_t *data, std::size_t length, std::vector<DemuxUnit> &units);
    // Forgets partial packets and units (a discontinuity upstream, a new run).
    void reset();

    int videoPid() const { return m_videoPid; }
    int audioPid() const { return m_audioPid; }

private:
    struct ProgramMap {
        int pmtPid = 0;
        bool seen = false;
        bool conditionalAccess = false;
        int videoPid = 0;
        int audioPid = 0;
    };

    void packet(const std::uint8_t *p, std::vector<DemuxUnit> &units);
    void sectionBytes(int pid, bool unitStart, const std::uint8_t *payload, std::size_t length,
                      std::vector<DemuxUnit> &units);
    void section(int pid, const std::vector<std::uint8_t> &data, std::vector<DemuxUnit> &units);
    void pesBytes(int pid, DemuxUnit::Kind kind, bool unitStart, const std::uint8_t *payload, std::size_t length,
                  std::vector<DemuxUnit> &units);
    void flushPes(int pid, DemuxUnit::Kind kind, std::vector<DemuxUnit> &units);
    bool isTablePid(int pid) const;
    void chooseStreams();

    std::vector<std::uint8_t> m_partial;              // bytes of a packet cut by a sample boundary
    std::map<int, int> m_counters;                    // PID -> last continuity counter
    std::map<int, std::vector<std::uint8_t>> m_units; // PID -> unit being gathered
    std::vector<int> m_programOrder;                  // program numbers in PAT order
    std::map<int, ProgramMap> m_programs;             // program number -> its map
    int m_videoPid = -1;
    int m_audioPid = -1;
};

} // namespace lab
