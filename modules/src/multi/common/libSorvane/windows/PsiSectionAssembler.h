// Puts the long-form PSI sections (PAT, PMT) of one PID back together from its packets:
// pointer field, sections spanning packets, several sections in one packet, stuffing. A
// section is handed on only when complete and its CRC-32 holds. A lost or errored packet
// drops the section in progress; a repeated packet (same continuity counter) is ignored.
#pragma once

#include "SorvaneExport.h"
#include "TsPacketView.h"

#include <cstdint>

namespace sorvane {

class SORVANE_API PsiSectionAssembler {
public:
    // table_id, two length bytes, and the CRC-32 of a long-form section.
    static const int kMaxSectionSize = 1024;
    static const int kMinSectionSize = 12;

    class Sink {
    public:
        virtual void onSection(uint16_t pid, const unsigned char *section, int length) = 0;

    protected:
        ~Sink() {}
    };

    PsiSectionAssembler();

    // Feeds one packet; its PID is the caller's business.
    void addPacket(const TsPacketView &packet, Sink &sink);

private:
    static const int kHeaderSize = 3;
    static const unsigned char kStuffing = 0xFF;

    bool continues(const TsPacketView &packet);
    void startSections(uint16_t pid, const unsigned char *data, int length, Sink &sink);
    // Appends what the section in progress still needs; returns the bytes it took.
    int append(uint16_t pid, const unsigned char *data, int length, Sink &sink);
    void deliver(uint16_t pid, Sink &sink);
    int expectedSize() const;

    int m_lastContinuity;
    bool m_collecting;
    int m_filled;
    unsigned char m_section[kMaxSectionSize];
};

} // namespace sorvane
