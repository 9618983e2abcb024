#include "broadcast/TsPacketizer.h"

namespace lab {

namespace {

const std::size_t kPayloadRoom = TsPacketizer::kPacketSize - 4;
const std::size_t kPcrFieldSize = 8; // length, flags, 6 bytes of PCR

const std::size_t kPcrOffset = 6; // header, adaptation_field_length, flags

void writePcr(long long pcr, std::uint8_t *field)
{
    const unsigned long long base = static_cast<unsigned long long>(pcr / 300) & 0x1FFFFFFFFull;
    const unsigned extension = static_cast<unsigned>(pcr % 300);
    field[0] = static_cast<std::uint8_t>(base >> 25);
    field[1] = static_cast<std::uint8_t>(base >> 17);
    field[2] = static_cast<std::uint8_t>(base >> 9);
    field[3] = static_cast<std::uint8_t>(base >> 1);
    field[4] = static_cast<std::uint8_t>(((base & 1u) << 7) | 0x7Eu | (extension >> 8));
    field[5] = static_cast<std::uint8_t>(extension & 0xFFu);
}

} // namespace

int TsPacketizer::nextCounter(int pid)
{
    int &counter = m_counters[pid];
    const int current = counter;
    counter = (counter + 1) & 0x0F;
    return current;
}

void TsPacketizer::packet(const PacketSpec &header, const std::uint8_t *payload, std::size_t length,
                          std::vector<std::uint8_t> &out)
{
    std::size_t adaptation = header.pcr >= 0 ? kPcrFieldSize : 0;
    if (header.stuffWithAdaptation && length + adaptation < kPayloadRoom)
        adaptation = kPayloadRoom - length;
    const std::size_t start = out.size();
    out.push_back(0x47);
    out.push_back(static_cast<std::uint8_t>((header.unitStart ? 0x40 : 0x00) | ((header.pid >> 8) & 0x1F)));
    out.push_back(static_cast<std::uint8_t>(header.pid & 0xFF));
    const int control = adaptation > 0 ? 0x30 : 0x10;
    out.push_back(static_cast<std::uint8_t>((header.scrambled ? 0x80 : 0x00) | control | nextCounter(header.pid)));
    if (adaptation > 0) {
        out.push_back(static_cast<std::uint8_t>(adaptation - 1));
        if (adaptation > 1) {
            out.push_back(header.pcr >= 0 ? 0x10 : 0x00);
            out.resize(start + 4 + adaptation, 0xFF);
            if (header.pcr >= 0)
                writePcr(header.pcr, &out[start + kPcrOffset]);
        }
    }
    for (std::size_t i = 0; i < length; ++i) {
        if (!header.scrambled) {
            out.push_back(payload[i]);
            continue;
        }
        m_noise = m_noise * 1664525u + 1013904223u;
        out.push_back(static_cast<std::uint8_t>(m_noise >> 24));
    }
    // Sections fill the rest of their last packet with 0xFF.
    out.resize(start + kPacketSize, 0xFF);
}

void TsPacketizer::section(int pid, const std::vector<std::uint8_t> &section, std::vector<std::uint8_t> &out)
{
    std::vector<std::uint8_t> data;
    data.reserve(section.size() + 1);
    data.push_back(0x00); // pointer_field: the section starts right after it
    data.insert(data.end(), section.begin(), section.end());
    for (std::size_t offset = 0; offset < data.size();) {
        const std::size_t length = data.size() - offset < kPayloadRoom ? data.size() - offset : kPayloadRoom;
        packet(PacketSpec{pid, offset == 0, false, -1, false}, data.data() + offset, length, out);
        offset += length;
    }
}

void TsPacketizer::pes(int pid, const std::vector<std::uint8_t> &pes, long long pcr, bool scrambled,
                       std::vector<std::uint8_t> &out)
{
    std::size_t offset = 0;
    bool first = true;
    while (offset < pes.size() || first) {
        const std::size_t room = first && pcr >= 0 ? kPayloadRoom - kPcrFieldSize : kPayloadRoom;
        const std::size_t length = pes.size() - offset < room ? pes.size() - offset : room;
        packet(PacketSpec{pid, first, scrambled, first ? pcr : -1, true}, pes.data() + offset, length, out);
        offset += length;
        first = false;
    }
}

void TsPacketizer::nullPacket(std::vector<std::uint8_t> &out)
{
    const std::size_t start = out.size();
    out.push_back(0x47);
    out.push_back(static_cast<std::uint8_t>(kNullPid >> 8));
    out.push_back(static_cast<std::uint8_t>(kNullPid & 0xFF));
    out.push_back(0x10);
    out.resize(start + kPacketSize, 0xFF);
}

bool TsPacketizer::stampPcr(std::uint8_t *packet, long long pcr)
{
    const bool adaptation = (packet[3] & 0x20) != 0;
    if (!adaptation || packet[4] < 7 || !(packet[5] & 0x10))
        return false;
    writePcr(pcr, packet + kPcrOffset);
    return true;
}

} // namespace lab
