// The first-priority indicators of ETSI TR 101 290 for a block of transport stream: sync
// loss, sync byte errors, PAT errors (missing, late, wrong table, scrambled), continuity
// count errors, PMT errors and referenced PIDs that never occur. Times come from the block's
// duration, spread evenly over its packets.
#pragma once

#include "SorvaneExport.h"

#include <cstdint>

namespace sorvane {

struct SORVANE_API StreamHealth {
    // Longest gap between PAT or PMT occurrences, and the period a referenced PID may miss.
    static const int kTableIntervalMs = 500;

    bool measured = false;
    int64_t packets = 0;
    double durationMs = 0.0;
    int64_t syncLosses = 0;
    int64_t syncByteErrors = 0;
    int64_t patErrors = 0;
    bool patMissing = false;
    int64_t continuityErrors = 0;
    int64_t pmtErrors = 0;
    int64_t pmtMissing = 0;
    int64_t pidErrors = 0;

    bool clean() const
    {
        return measured && syncLosses == 0 && syncByteErrors == 0 && patErrors == 0 && continuityErrors == 0 &&
               pmtErrors == 0 && pidErrors == 0;
    }
};

} // namespace sorvane
