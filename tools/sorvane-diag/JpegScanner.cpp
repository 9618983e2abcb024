#include "JpegScanner.h"

namespace sorvane {
namespace diag {

namespace {

const unsigned char kMarker = 0xFF;
const unsigned char kStartOfImage = 0xD8;
const unsigned char kEndOfImage = 0xD9;
const unsigned char kStartOfScan = 0xDA;

bool isRestart(unsigned char marker)
{
    return marker >= 0xD0 && marker <= 0xD7;
}

// Markers that carry no length field.
bool standsAlone(unsigned char marker)
{
    return isRestart(marker) || marker == 0x01;
}

} // namespace

size_t JpegScanner::length(const unsigned char *data, size_t limit)
{
    if (!data || limit < 4 || data[0] != kMarker || data[1] != kStartOfImage)
        return 0;
    size_t at = 2;
    while (at + 1 < limit) {
        if (data[at] != kMarker)
            return 0;
        while (at + 1 < limit && data[at + 1] == kMarker)
            ++at; // fill bytes
        if (at + 1 >= limit)
            return 0;
        const unsigned char marker = data[at + 1];
        if (marker == kEndOfImage)
            return at + 2;
        if (standsAlone(marker)) {
            at += 2;
            continue;
        }
        if (at + 3 >= limit)
            return 0;
        const size_t segment = (static_cast<size_t>(data[at + 2]) << 8) | data[at + 3];
        if (segment < 2)
            return 0;
        at += 2 + segment;
        if (marker == kStartOfScan)
            at = skipEntropyData(data, at, limit);
    }
    return 0;
}

size_t JpegScanner::skipEntropyData(const unsigned char *data, size_t at, size_t limit)
{
    for (; at + 1 < limit; ++at) {
        // 0xFF 0x00 is a stuffed data byte; restart markers belong to the scan.
        if (data[at] == kMarker && data[at + 1] != 0x00 && !isRestart(data[at + 1]))
            return at;
    }
    return limit;
}

} // namespace diag
} // namespace sorvane
