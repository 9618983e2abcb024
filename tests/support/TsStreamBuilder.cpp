#include "TsStreamBuilder.h"

#include <Crc32Mpeg2.h>

namespace sorvane {
namespace test {

namespace {

const int kHeaderSize = 4;
const int kPayloadSize = TsStreamBuilder::kPacketSize - kHeaderSize;
const uint8_t kCaTag = 0x09;
const uint8_t kPrivateTag = 0x80;

void put16(Bytes &out, unsigned value)
{
    out.push_back(static_cast<uint8_t>(value >> 8));
    out.push_back(static_cast<uint8_t>(value));
}

Bytes caDescriptor()
{
    return Bytes{kCaTag, 4, 0x0B, 0x00, 0xE1, 0x00};
}

} // namespace

Bytes TsStreamBuilder::section(uint8_t tableId, uint16_t extension, int version, bool current, int number, int last,
                               const Bytes &body)
{
    Bytes out;
    out.push_back(tableId);
    const unsigned length = static_cast<unsigned>(5 + body.size() + 4);
    put16(out, 0xB000 | length);
    put16(out, extension);
    out.push_back(static_cast<uint8_t>(0xC0 | ((version & 0x1F) << 1) | (current ? 1 : 0)));
    out.push_back(static_cast<uint8_t>(number));
    out.push_back(static_cast<uint8_t>(last));
    out.insert(out.end(), body.begin(), body.end());
    const uint32_t crc = Crc32Mpeg2::compute(out.data(), static_cast<int>(out.size()));
    put16(out, crc >> 16);
    put16(out, crc & 0xFFFF);
    return out;
}

Bytes TsStreamBuilder::pat(const std::vector<TsProgram> &programs, int version, bool current, int number, int last)
{
    Bytes body;
    for (const TsProgram &program : programs) {
        put16(body, program.number);
        put16(body, 0xE000 | program.pmtPid);
    }
    return section(0x00, 1, version, current, number, last, body);
}

Bytes TsStreamBuilder::pmt(uint16_t program, const std::vector<TsElementaryStream> &streams, bool programCa,
                           int version, int descriptorPadding)
{
    Bytes info;
    if (programCa) {
        const Bytes ca = caDescriptor();
        info.insert(info.end(), ca.begin(), ca.end());
    }
    while (descriptorPadding > 0) {
        const int size = descriptorPadding > 100 ? 100 : descriptorPadding;
        info.push_back(kPrivateTag);
        info.push_back(static_cast<uint8_t>(size));
        info.insert(info.end(), static_cast<size_t>(size), 0x55);
        descriptorPadding -= size;
    }
    Bytes body;
    put16(body, 0xE000 | (streams.empty() ? 0x1FFF : streams.front().pid));
    put16(body, 0xF000 | static_cast<unsigned>(info.size()));
    body.insert(body.end(), info.begin(), info.end());
    for (const TsElementaryStream &stream : streams) {
        body.push_back(stream.streamType);
        put16(body, 0xE000 | stream.pid);
        const Bytes esInfo = stream.conditionalAccess ? caDescriptor() : Bytes();
        put16(body, 0xF000 | static_cast<unsigned>(esInfo.size()));
        body.insert(body.end(), esInfo.begin(), esInfo.end());
    }
    return section(0x02, program, version, true, 0, 0, body);
}

Bytes TsStreamBuilder::packet(uint16_t pid, bool unitStart, int continuity, const Bytes &payload, bool error,
                              int scrambling)
{
    Bytes out;
    out.push_back(0x47);
    out.push_back(static_cast<uint8_t>((error ? 0x80 : 0) | (unitStart ? 0x40 : 0) | ((pid >> 8) & 0x1F)));
    out.push_back(static_cast<uint8_t>(pid));
    out.push_back(static_cast<uint8_t>(((scrambling & 3) << 6) | 0x10 | (continuity & 0x0F)));
    out.insert(out.end(), payload.begin(), payload.end());
    out.resize(kPacketSize, 0xFF);
    return out;
}

int TsStreamBuilder::nextContinuity(uint16_t pid)
{
    int &counter = m_continuity[pid];
    const int value = counter;
    counter = (counter + 1) & 0x0F;
    return value;
}

TsStreamBuilder &TsStreamBuilder::addSection(uint16_t pid, const Bytes &sectionBytes)
{
    Bytes rest(1, 0x00);
    rest.insert(rest.end(), sectionBytes.begin(), sectionBytes.end());
    bool first = true;
    size_t at = 0;
    while (at < rest.size()) {
        const size_t count = rest.size() - at < static_cast<size_t>(kPayloadSize) ? rest.size() - at : kPayloadSize;
        addPacket(packet(pid, first, nextContinuity(pid), Bytes(rest.begin() + at, rest.begin() + at + count)));
        at += count;
        first = false;
    }
    return *this;
}

TsStreamBuilder &TsStreamBuilder::addPayload(uint16_t pid, bool scrambled)
{
    return addPacket(packet(pid, false, nextContinuity(pid), Bytes(kPayloadSize, 0x11), false, scrambled ? 2 : 0));
}

TsStreamBuilder &TsStreamBuilder::addPacket(const Bytes &packetBytes)
{
    m_bytes.insert(m_bytes.end(), packetBytes.begin(), packetBytes.end());
    return *this;
}

} // namespace test
} // namespace sorvane
