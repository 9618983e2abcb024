// Finds the first program of a transport stream that is not scrambled. It reads the PAT
// (every section of its current version) and each program's PMT, in the PAT's order: a
// program is scrambled when its PMT carries a CA descriptor or a packet of one of its
// elementary streams has scrambling control bits set. A program is clear once every one of
// its elementary streams was seen unscrambled; at the end of the stream a program whose PMT
// is clear and whose packets never showed scrambling counts as clear too.
#pragma once

#include "PsiSectionAssembler.h"
#include "SorvaneExport.h"
#include "TsPacketSource.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace sorvane {

class SORVANE_API ClearProgramSearch : private PsiSectionAssembler::Sink {
public:
    static const int kNoClearProgram = -1;
    static const int kUndecided = -2;
    // Packets read before the search gives up waiting for tables that never come.
    static const int kMaxPackets = 20000;

    ClearProgramSearch();

    // Reads packets from `source` until the answer is known or the source runs dry: the
    // program number, or -1 when there is no clear program.
    static int processTransportStream(TsPacketSource &source);

    // Feeds one 188-byte packet; returns the answer once it is known, else kUndecided.
    int addPacket(const unsigned char *packet);
    // The answer when no more packets will come.
    int finish() const;

private:
    struct Program {
        uint16_t number;
        uint16_t pmtPid;
        bool pmtSeen;
        int pmtVersion;
        bool conditionalAccess;
        std::vector<uint16_t> streamPids;
    };
    struct PatSection {
        bool seen;
        std::vector<Program> programs;
    };

    static const int kPidCount = 0x2000;
    static const uint8_t kSeenClear = 1;
    static const uint8_t kSeenScrambled = 2;

    void onSection(uint16_t pid, const unsigned char *section, int length) override;
    void onPatSection(const unsigned char *section, int length);
    void onPmtSection(uint16_t pid, const unsigned char *section, int length);
    void parseStreams(Program &program, const unsigned char *section, int length);
    void resetPat(int version, int lastSection);
    void completePat();
    int decide(bool endOfStream) const;
    // Clear, scrambled, or not yet known (kUndecided).
    int judge(const Program &program, bool endOfStream) const;

    PsiSectionAssembler m_patAssembler;
    std::map<uint16_t, PsiSectionAssembler> m_pmtAssemblers;
    int m_patVersion;
    int m_patLastSection;
    std::vector<PatSection> m_patSections;
    bool m_patComplete;
    std::vector<Program> m_programs;
    std::vector<uint8_t> m_pidState;
};

} // namespace sorvane
