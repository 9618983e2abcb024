// A transport stream as a .ts file a player or an analyser opens: the bytes from the first
// packet boundary (five sync bytes 188 bytes apart) to the last whole packet.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class TransportStreamFile {
public:
    static const size_t kPacketSize = 188;

    // Where the whole packets of `bytes` start and how many bytes they take; 0 bytes when
    // the stream never synchronises.
    static void wholePackets(const std::vector<unsigned char> &bytes, size_t &offset, size_t &length);
    // Writes the whole packets; returns how many were written. Throws HostError when the file
    // cannot be written.
    static size_t write(const std::wstring &path, const std::vector<unsigned char> &bytes);

private:
    static bool synchronisedAt(const std::vector<unsigned char> &bytes, size_t offset);
};

} // namespace diag
} // namespace sorvane
