#include "TsPacketSearch.h"
#include "TsPacketView.h"

#include <cstring>

namespace sorvane {

namespace {

const int kSyncsChecked = 4;

bool isSynchronised(const unsigned char *candidate)
{
    for (int k = 0; k < kSyncsChecked; ++k) {
        if (candidate[k * TsPacketView::kSize] != TsPacketView::kSyncByte)
            return false;
    }
    return true;
}

} // namespace

bool TsPacketSearch::findPacket(const unsigned char *data, int32_t &readPosition, int32_t writeCount,
                                unsigned char *packet)
{
    if (readPosition < 0)
        readPosition = 0;
    // 64-bit: a write count near the 32-bit limit must not wrap the comparison.
    const int64_t end = static_cast<int64_t>(writeCount) - kLookAhead;
    while (readPosition < end) {
        // Noise is skipped a sync-byte candidate at a time rather than byte by byte.
        const void *found =
            std::memchr(data + readPosition, TsPacketView::kSyncByte, static_cast<size_t>(end - readPosition));
        if (!found) {
            readPosition = static_cast<int32_t>(end);
            break;
        }
        readPosition = static_cast<int32_t>(static_cast<const unsigned char *>(found) - data);
        if (isSynchronised(data + readPosition)) {
            std::memcpy(packet, data + readPosition, TsPacketView::kSize);
            readPosition += TsPacketView::kSize;
            return true;
        }
        ++readPosition;
    }
    return false;
}

} // namespace sorvane
