// The clear-program search over arbitrary packets. The first byte chooses whether every
// packet gets its sync byte (so the fuzzer spends its time in the PAT/PMT parsing) and the
// rest is cut into 188-byte packets, each copied to a buffer of exactly that size.
#include <ClearProgramSearch.h>
#include <TsPacketSource.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

class FuzzSource : public sorvane::TsPacketSource {
public:
    FuzzSource(const uint8_t *data, size_t size, bool forceSync) : m_data(data), m_size(size), m_forceSync(forceSync) {}

    bool getNextPacket(unsigned char *packet) override
    {
        if (m_at + 188 > m_size)
            return false;
        std::memcpy(packet, m_data + m_at, 188);
        if (m_forceSync)
            packet[0] = 0x47;
        m_at += 188;
        return true;
    }

private:
    const uint8_t *m_data;
    size_t m_size;
    bool m_forceSync;
    size_t m_at = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    FuzzSource source(data + 1, size - 1, (data[0] & 1) == 0);
    const int answer = sorvane::ClearProgramSearch::processTransportStream(source);
    if (answer < -1 || answer > 0xFFFF || answer == 0)
        std::abort();

    // The same packets fed one at a time from exact-size heap copies.
    sorvane::ClearProgramSearch search;
    for (size_t at = 1; at + 188 <= size; at += 188) {
        std::unique_ptr<unsigned char[]> packet(new unsigned char[188]);
        std::memcpy(packet.get(), data + at, 188);
        if (search.addPacket(packet.get()) != sorvane::ClearProgramSearch::kUndecided)
            break;
    }
    return 0;
}
