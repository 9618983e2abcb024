#include "TransportStreamCheck.h"

#include <cstdio>
#include <cstring>

namespace labtest {

namespace {

const size_t kPacket = 188;

int pidOf(const std::uint8_t *p)
{
    return ((p[1] & 0x1F) << 8) | p[2];
}

} // namespace

bool TransportStreamCheck::crcHolds(const std::uint8_t *section, size_t length)
{
    // Bit by bit, MSB first: over a section with its CRC the remainder is 0.
    std::uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < length; ++i) {
        for (int bit = 7; bit >= 0; --bit) {
            const bool in = ((section[i] >> bit) & 1) != 0;
            const bool top = (crc & 0x80000000u) != 0;
            crc <<= 1;
            if (in != top)
                crc ^= 0x04C11DB7u;
        }
    }
    return crc == 0;
}

TransportStreamCheck::TransportStreamCheck(const std::vector<std::uint8_t> &bytes)
{
    for (size_t offset = 0; offset + kPacket <= bytes.size(); offset += kPacket) {
        ++m_packets;
        if (bytes[offset] != 0x47) {
            ++m_outOfSync;
            continue;
        }
        packet(bytes.data() + offset);
    }
}

void TransportStreamCheck::packet(const std::uint8_t *p)
{
    const int pid = pidOf(p);
    if (p[1] & 0x80)
        ++m_errors;
    if (pid == 0x1FFF)
        return;
    const int scrambling = (p[3] >> 6) & 0x03;
    const int adaptation = (p[3] >> 4) & 0x03;
    const int counter = p[3] & 0x0F;
    if (scrambling != 0)
        ++m_scrambled;
    if (adaptation & 0x01) {
        const auto previous = m_counters.find(pid);
        if (previous != m_counters.end() && ((previous->second + 1) & 0x0F) != counter)
            ++m_continuityErrors;
        m_counters[pid] = counter;
    }
    if (!(adaptation & 0x01) || scrambling != 0)
        return;
    size_t start = 4;
    if (adaptation & 0x02)
        start += 1 + p[4];
    if (start >= kPacket)
        return;
    const bool unitStart = (p[1] & 0x40) != 0;
    std::vector<std::uint8_t> &unit = m_units[pid];
    if (unitStart) {
        if (unit.size() >= 4 && unit[0] == 0 && unit[1] == 0 && unit[2] == 1)
            pesPayload(pid, unit);
        unit.clear();
    } else if (unit.empty()) {
        return; // joined in the middle of a unit
    }
    unit.insert(unit.end(), p + start, p + kPacket);
    const bool psi = pid == 0 || [&] {
        for (const auto &program : m_programs) {
            if (program.second.pmtPid == pid)
                return true;
        }
        return false;
    }();
    if (!psi || unit.empty())
        return;
    const size_t pointer = unit[0];
    if (unit.size() < 1 + pointer + 3)
        return;
    const size_t length = 3 + (((unit[2 + pointer] & 0x0F) << 8) | unit[3 + pointer]);
    if (unit.size() < 1 + pointer + length)
        return;
    section(pid, std::vector<std::uint8_t>(unit.begin() + 1 + static_cast<long>(pointer),
                                           unit.begin() + 1 + static_cast<long>(pointer + length)));
    unit.clear();
}

void TransportStreamCheck::section(int pid, const std::vector<std::uint8_t> &data)
{
    if (!crcHolds(data.data(), data.size())) {
        ++m_badCrcs;
        return;
    }
    const size_t end = data.size() - 4;
    if (pid == 0 && data[0] == 0x00) {
        ++m_patSections;
        m_tsid = (data[3] << 8) | data[4];
        for (size_t i = 8; i + 4 <= end; i += 4) {
            const int number = (data[i] << 8) | data[i + 1];
            TsProgram &program = m_programs[number];
            program.number = number;
            program.pmtPid = ((data[i + 2] & 0x1F) << 8) | data[i + 3];
        }
        return;
    }
    if (data[0] != 0x02)
        return;
    const int number = (data[3] << 8) | data[4];
    TsProgram &program = m_programs[number];
    program.number = number;
    program.mapSeen = true;
    program.pcrPid = ((data[8] & 0x1F) << 8) | data[9];
    const size_t infoLength = ((data[10] & 0x0F) << 8) | data[11];
    for (size_t i = 12; i + 2 <= 12 + infoLength; i += 2 + data[i + 1]) {
        if (data[i] == 0x09)
            program.caDescriptor = true;
    }
    for (size_t i = 12 + infoLength; i + 5 <= end; i += 5 + (((data[i + 3] & 0x0F) << 8) | data[i + 4]))
        program.streams[((data[i + 1] & 0x1F) << 8) | data[i + 2]] = data[i];
}

void TransportStreamCheck::pesPayload(int pid, const std::vector<std::uint8_t> &pes)
{
    if (pes.size() < 9 || pes[3] != 0xE0)
        return;
    const size_t payload = 9 + pes[8];
    const char prefix[] = "SORVANE-LAB ";
    for (size_t i = payload; i + 4 < pes.size(); ++i) {
        if (pes[i] != 0 || pes[i + 1] != 0 || pes[i + 2] != 1 || pes[i + 3] != 0xB2)
            continue;
        const std::string text(reinterpret_cast<const char *>(pes.data()) + i + 4,
                               strnlen(reinterpret_cast<const char *>(pes.data()) + i + 4, pes.size() - i - 4));
        TsPicture picture;
        picture.pid = pid;
        if (text.compare(0, sizeof(prefix) - 1, prefix) == 0 &&
            std::sscanf(text.c_str() + sizeof(prefix) - 1, "channel=%d program=%d frame=%lu", &picture.channel,
                        &picture.program, &picture.frame) == 3)
            m_pictures.push_back(picture);
        return;
    }
}

} // namespace labtest
