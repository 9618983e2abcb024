#include "PsiSectionAssembler.h"
#include "Crc32Mpeg2.h"

#include <cstring>

namespace sorvane {

namespace {

const int kNoContinuity = -1;
const int kContinuityModulo = 16;

} // namespace

PsiSectionAssembler::PsiSectionAssembler() : m_lastContinuity(kNoContinuity), m_collecting(false), m_filled(0) {}

void PsiSectionAssembler::addPacket(const TsPacketView &packet, Sink &sink)
{
    if (packet.transportError()) {
        m_collecting = false;
        return;
    }
    // Packets without payload do not advance the continuity counter.
    if (!packet.hasPayload())
        return;
    if (!continues(packet))
        return;

    const unsigned char *payload = packet.payload();
    const int size = packet.payloadSize();
    if (size <= 0)
        return;
    if (!packet.payloadUnitStart()) {
        if (m_collecting)
            append(packet.pid(), payload, size, sink);
        return;
    }
    const int pointer = payload[0];
    if (1 + pointer > size) {
        m_collecting = false;
        return;
    }
    // The bytes before the pointed-to start end the section in progress.
    if (m_collecting)
        append(packet.pid(), payload + 1, pointer, sink);
    m_collecting = false;
    startSections(packet.pid(), payload + 1 + pointer, size - 1 - pointer, sink);
}

bool PsiSectionAssembler::continues(const TsPacketView &packet)
{
    const int counter = packet.continuityCounter();
    if (m_lastContinuity != kNoContinuity) {
        if (counter == m_lastContinuity)
            return false;
        if (counter != (m_lastContinuity + 1) % kContinuityModulo)
            m_collecting = false;
    }
    m_lastContinuity = counter;
    return true;
}

void PsiSectionAssembler::startSections(uint16_t pid, const unsigned char *data, int length, Sink &sink)
{
    while (length > 0 && data[0] != kStuffing) {
        m_collecting = true;
        m_filled = 0;
        const int taken = append(pid, data, length, sink);
        if (m_collecting)
            return;
        data += taken;
        length -= taken;
    }
}

int PsiSectionAssembler::expectedSize() const
{
    return kHeaderSize + (((m_section[1] & 0x0F) << 8) | m_section[2]);
}

int PsiSectionAssembler::append(uint16_t pid, const unsigned char *data, int length, Sink &sink)
{
    int taken = 0;
    if (m_filled < kHeaderSize) {
        const int wanted = kHeaderSize - m_filled;
        const int count = length < wanted ? length : wanted;
        std::memcpy(m_section + m_filled, data, static_cast<size_t>(count));
        m_filled += count;
        taken += count;
        if (m_filled < kHeaderSize)
            return taken;
    }
    const int size = expectedSize();
    if (size > kMaxSectionSize || size < kMinSectionSize) {
        // Not a section this parser can hold; the rest of this payload is unusable too.
        m_collecting = false;
        return length;
    }
    const int wanted = size - m_filled;
    const int available = length - taken;
    const int count = available < wanted ? available : wanted;
    std::memcpy(m_section + m_filled, data + taken, static_cast<size_t>(count));
    m_filled += count;
    taken += count;
    if (m_filled == size)
        deliver(pid, sink);
    return taken;
}

void PsiSectionAssembler::deliver(uint16_t pid, Sink &sink)
{
    m_collecting = false;
    const bool longForm = (m_section[1] & 0x80) != 0;
    if (!longForm)
        return;
    if (Crc32Mpeg2::compute(m_section, m_filled) != 0)
        return;
    sink.onSection(pid, m_section, m_filled);
}

} // namespace sorvane
