// The packet buffer's search over arbitrary bytes: every packet it returns starts with
// four sync bytes at packet spacing, and the read position only moves forward and stays
// within the bytes written.
#include <TsPacketSearch.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // An exact-size copy, so that the sanitizer catches any read past the bytes written.
    std::vector<uint8_t> bytes(data, data + size);
    const int32_t writeCount = static_cast<int32_t>(size);
    int32_t readPosition = 0;
    unsigned char packet[188];
    while (true) {
        const int32_t before = readPosition;
        const bool found = sorvane::TsPacketSearch::findPacket(bytes.data(), readPosition, writeCount, packet);
        if (readPosition < before || readPosition > writeCount)
            std::abort();
        if (!found)
            break;
        const int32_t at = readPosition - 188;
        if (packet[0] != 0x47 || std::memcmp(packet, bytes.data() + at, 188) != 0)
            std::abort();
        for (int k = 1; k < 4; ++k) {
            if (bytes[static_cast<size_t>(at + k * 188)] != 0x47)
                std::abort();
        }
    }
    return 0;
}
