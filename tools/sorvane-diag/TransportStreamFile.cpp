#include "TransportStreamFile.h"
#include "HostPaths.h"

namespace sorvane {
namespace diag {

namespace {
const unsigned char kSyncByte = 0x47;
const size_t kSyncsWanted = 5;
} // namespace

bool TransportStreamFile::synchronisedAt(const std::vector<unsigned char> &bytes, size_t offset)
{
    const size_t packets = (bytes.size() - offset) / kPacketSize;
    const size_t wanted = packets < kSyncsWanted ? packets : kSyncsWanted;
    if (wanted == 0)
        return false;
    for (size_t k = 0; k < wanted; ++k) {
        if (bytes[offset + k * kPacketSize] != kSyncByte)
            return false;
    }
    return true;
}

void TransportStreamFile::wholePackets(const std::vector<unsigned char> &bytes, size_t &offset, size_t &length)
{
    offset = 0;
    length = 0;
    for (size_t at = 0; at + kPacketSize <= bytes.size() && at < kPacketSize; ++at) {
        if (synchronisedAt(bytes, at)) {
            offset = at;
            length = (bytes.size() - at) / kPacketSize * kPacketSize;
            return;
        }
    }
}

size_t TransportStreamFile::write(const std::wstring &path, const std::vector<unsigned char> &bytes)
{
    size_t offset = 0;
    size_t length = 0;
    wholePackets(bytes, offset, length);
    HostPaths::writeFile(path, length ? bytes.data() + offset : bytes.data(), length);
    return length / kPacketSize;
}

} // namespace diag
} // namespace sorvane
