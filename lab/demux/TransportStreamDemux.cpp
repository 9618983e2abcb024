#include "demux/TransportStreamDemux.h"

#include <algorithm>

#include "broadcast/Crc32Mpeg2.h"

namespace lab {

namespace {

const std::size_t kPacket = 188;
const int kNullPid = 0x1FFF;

int pidOf(const std::uint8_t *p)
{
    return ((p[1] & 0x1F) << 8) | p[2];
}

bool isPesStart(const std::vector<std::uint8_t> &unit)
{
    return unit.size() >= 9 && unit[0] == 0 && unit[1] == 0 && unit[2] == 1;
}

} // namespace

void TransportStreamDemux::reset()
{
    m_partial.clear();
    m_counters.clear();
    m_units.clear();
}

void TransportStreamDemux::feed(const std::uint8_t *data, std::size_t length, std::vector<DemuxUnit> &units)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(m_partial.size() + length);
    bytes.insert(bytes.end(), m_partial.begin(), m_partial.end());
    bytes.insert(bytes.end(), data, data + length);
    m_partial.clear();
    std::size_t offset = 0;
    while (offset + kPacket <= bytes.size()) {
        if (bytes[offset] != 0x47) {
            ++offset; // hunt for the next sync byte
            continue;
        }
        packet(bytes.data() + offset, units);
        offset += kPacket;
    }
    m_partial.assign(bytes.begin() + static_cast<std::ptrdiff_t>(offset), bytes.end());
}

void TransportStreamDemux::packet(const std::uint8_t *p, std::vector<DemuxUnit> &units)
{
    const int pid = pidOf(p);
    if (pid == kNullPid)
        return;
    if ((p[1] & 0x80) || (p[3] & 0xC0)) {
        // Damaged or scrambled: what was gathered on this PID cannot be completed.
        m_units.erase(pid);
        m_counters.erase(pid);
        return;
    }
    const int control = (p[3] >> 4) & 0x03;
    if (!(control & 0x01))
        return;
    const int counter = p[3] & 0x0F;
    const auto previous = m_counters.find(pid);
    if (previous != m_counters.end() && ((previous->second + 1) & 0x0F) != counter)
        m_units.erase(pid);
    m_counters[pid] = counter;
    std::size_t start = 4;
    if (control & 0x02)
        start += 1 + p[4];
    if (start >= kPacket)
        return;
    const bool unitStart = (p[1] & 0x40) != 0;
    if (isTablePid(pid))
        sectionBytes(pid, unitStart, p + start, kPacket - start, units);
    else if (pid == m_videoPid)
        pesBytes(pid, DemuxUnit::Kind::Video, unitStart, p + start, kPacket - start, units);
    else if (pid == m_audioPid)
        pesBytes(pid, DemuxUnit::Kind::Audio, unitStart, p + start, kPacket - start, units);
}

bool TransportStreamDemux::isTablePid(int pid) const
{
    if (pid == 0)
        return true;
    for (const auto &program : m_programs) {
        if (program.second.pmtPid == pid)
            return true;
    }
    return false;
}

void TransportStreamDemux::sectionBytes(int pid, bool unitStart, const std::uint8_t *payload, std::size_t length,
                                        std::vector<DemuxUnit> &units)
{
    std::vector<std::uint8_t> &unit = m_units[pid];
    if (unitStart) {
        const std::size_t pointer = payload[0];
        if (1 + pointer > length)
            return;
        unit.assign(payload + 1 + pointer, payload + length);
    } else if (!unit.empty()) {
        unit.insert(unit.end(), payload, payload + length);
    } else {
        return;
    }
    if (unit.size() < 3)
        return;
    const std::size_t sectionLength = 3 + (((unit[1] & 0x0F) << 8) | unit[2]);
    if (unit.size() < sectionLength)
        return;
    const std::vector<std::uint8_t> complete(unit.begin(), unit.begin() + static_cast<std::ptrdiff_t>(sectionLength));
    unit.clear();
    section(pid, complete, units);
}

void TransportStreamDemux::section(int pid, const std::vector<std::uint8_t> &data, std::vector<DemuxUnit> &units)
{
    if (data.size() < 12 || Crc32Mpeg2::compute(data.data(), data.size()) != 0)
        return;
    units.push_back(DemuxUnit{DemuxUnit::Kind::Section, data});
    const std::size_t end = data.size() - 4;
    if (pid == 0 && data[0] == 0x00) {
        std::vector<int> order;
        std::map<int, ProgramMap> programs;
        for (std::size_t i = 8; i + 4 <= end; i += 4) {
            const int number = (data[i] << 8) | data[i + 1];
            if (number == 0)
                continue; // the network PID
            ProgramMap map = m_programs.count(number) ? m_programs[number] : ProgramMap();
            map.pmtPid = ((data[i + 2] & 0x1F) << 8) | data[i + 3];
            programs[number] = map;
            order.push_back(number);
        }
        m_programOrder = order;
        m_programs = programs;
        chooseStreams();
        return;
    }
    if (data[0] != 0x02)
        return;
    const int number = (data[3] << 8) | data[4];
    const auto found = m_programs.find(number);
    if (found == m_programs.end() || found->second.pmtPid != pid)
        return;
    ProgramMap map;
    map.pmtPid = pid;
    map.seen = true;
    const std::size_t infoLength = ((data[10] & 0x0F) << 8) | data[11];
    for (std::size_t i = 12; i + 2 <= 12 + infoLength && i + 2 <= end; i += 2 + data[i + 1]) {
        if (data[i] == 0x09)
            map.conditionalAccess = true;
    }
    for (std::size_t i = 12 + infoLength; i + 5 <= end; i += 5 + (((data[i + 3] & 0x0F) << 8) | data[i + 4])) {
        const int type = data[i];
        const int streamPid = ((data[i + 1] & 0x1F) << 8) | data[i + 2];
        if (type == 0x02 && map.videoPid == 0)
            map.videoPid = streamPid;
        if ((type == 0x03 || type == 0x04 || type == 0x0F || type == 0x81) && map.audioPid == 0)
            map.audioPid = streamPid;
    }
    found->second = map;
    chooseStreams();
}

void TransportStreamDemux::chooseStreams()
{
    int video = -1;
    int audio = -1;
    for (const int number : m_programOrder) {
        const ProgramMap &map = m_programs[number];
        if (map.seen && !map.conditionalAccess && map.videoPid != 0) {
            video = map.videoPid;
            audio = map.audioPid != 0 ? map.audioPid : -1;
            break;
        }
    }
    if (video != m_videoPid)
        m_units.erase(m_videoPid);
    if (audio != m_audioPid)
        m_units.erase(m_audioPid);
    m_videoPid = video;
    m_audioPid = audio;
}

void TransportStreamDemux::pesBytes(int pid, DemuxUnit::Kind kind, bool unitStart, const std::uint8_t *payload,
                                    std::size_t length, std::vector<DemuxUnit> &units)
{
    std::vector<std::uint8_t> &unit = m_units[pid];
    if (unitStart) {
        flushPes(pid, kind, units);
        m_units[pid].assign(payload, payload + length);
    } else if (!unit.empty()) {
        unit.insert(unit.end(), payload, payload + length);
    } else {
        return;
    }
    // A bounded PES packet is complete as soon as its length is reached.
    const std::vector<std::uint8_t> &gathered = m_units[pid];
    if (isPesStart(gathered)) {
        const std::size_t declared = (gathered[4] << 8) | gathered[5];
        if (declared != 0 && gathered.size() >= declared + 6)
            flushPes(pid, kind, units);
    }
}

void TransportStreamDemux::flushPes(int pid, DemuxUnit::Kind kind, std::vector<DemuxUnit> &units)
{
    std::vector<std::uint8_t> &unit = m_units[pid];
    if (isPesStart(unit)) {
        const std::size_t declared = (unit[4] << 8) | unit[5];
        const std::size_t end = declared != 0 ? std::min(unit.size(), declared + 6) : unit.size();
        const std::size_t payload = 9 + static_cast<std::size_t>(unit[8]);
        if (payload < end)
            units.push_back(
                DemuxUnit{kind, std::vector<std::uint8_t>(unit.begin() + static_cast<std::ptrdiff_t>(payload),
                                                          unit.begin() + static_cast<std::ptrdiff_t>(end))});
    }
    unit.clear();
}

} // namespace lab
