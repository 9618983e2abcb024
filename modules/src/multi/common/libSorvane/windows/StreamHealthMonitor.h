// Measures the StreamHealth of a block of transport-stream bytes. Portable; never reads past
// the block, whatever its bytes.
#pragma once

#include "PsiSectionAssembler.h"
#include "SorvaneExport.h"
#include "StreamHealth.h"

#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace sorvane {

class SORVANE_API StreamHealthMonitor : private PsiSectionAssembler::Sink {
public:
    // `durationMs` is how long the block took to arrive; 0 leaves the timing checks out.
    static StreamHealth analyze(const unsigned char *data, int length, double durationMs);

private:
    static const int kSyncToAcquire = 5;
    static const int kBadSyncsForLoss = 2;

    struct PidState {
        int lastContinuity = -1;
        bool repeated = false;
    };

    StreamHealthMonitor();
    void walk(const unsigned char *data, int length);
    void packet(const unsigned char *bytes, int64_t index);
    void checkContinuity(const unsigned char *bytes);
    void onSection(uint16_t pid, const unsigned char *section, int length) override;
    void checkTimes(double durationMs);
    // Counts the gaps longer than the table interval between occurrences (and the block's ends).
    int64_t lateCount(const std::vector<int64_t> &occurrences, double msPerPacket) const;

    StreamHealth m_health;
    std::map<uint16_t, PidState> m_pids;
    std::set<uint16_t> m_seenPids;
    PsiSectionAssembler m_patAssembler;
    std::map<uint16_t, PsiSectionAssembler> m_pmtAssemblers;
    std::map<uint16_t, std::vector<int64_t>> m_tableTimes;
    std::set<uint16_t> m_referencedPids;
};

} // namespace sorvane
