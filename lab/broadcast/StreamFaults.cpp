#include "broadcast/StreamFaults.h"

namespace lab {

void StreamFaults::add(const StreamFaults &other)
{
    silence = silence || other.silence;
    syncLoss = syncLoss || other.syncLoss;
    errorPercent = other.errorPercent > errorPercent ? other.errorPercent : errorPercent;
    noPat = noPat || other.noPat;
    allScrambled = allScrambled || other.allScrambled;
}

} // namespace lab
