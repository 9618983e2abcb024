// Read-only view of one 188-byte MPEG-2 transport-stream packet: header fields and where
// its payload lies. Every offset it gives stays inside the packet, whatever the bytes.
#pragma once

#include <cstdint>

namespace sorvane {

class TsPacketView {
public:
    static const int kSize = 188;
    static const unsigned char kSyncByte = 0x47;
    static const int kHeaderSize = 4;
    static const uint16_t kNullPid = 0x1FFF;

    explicit TsPacketView(const unsigned char *packet) : m_bytes(packet) {}

    bool inSync() const { return m_bytes[0] == kSyncByte; }
    bool transportError() const { return (m_bytes[1] & 0x80) != 0; }
    bool payloadUnitStart() const { return (m_bytes[1] & 0x40) != 0; }
    uint16_t pid() const { return static_cast<uint16_t>(((m_bytes[1] & 0x1F) << 8) | m_bytes[2]); }
    int scramblingControl() const { return (m_bytes[3] >> 6) & 0x3; }
    bool hasAdaptationField() const { return (m_bytes[3] & 0x20) != 0; }
    bool hasPayload() const { return (m_bytes[3] & 0x10) != 0; }
    int continuityCounter() const { return m_bytes[3] & 0x0F; }

    // Offset of the first payload byte, or kSize when the packet carries none (no payload
    // flag, or an adaptation field that claims the whole packet or more).
    int payloadOffset() const
    {
        if (!hasPayload())
            return kSize;
        if (!hasAdaptationField())
            return kHeaderSize;
        const int offset = kHeaderSize + 1 + m_bytes[kHeaderSize];
        return offset < kSize ? offset : kSize;
    }
    const unsigned char *payload() const { return m_bytes + payloadOffset(); }
    int payloadSize() const { return kSize - payloadOffset(); }
    const unsigned char *bytes() const { return m_bytes; }

private:
    const unsigned char *m_bytes;
};

} // namespace sorvane
