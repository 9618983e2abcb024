#include "broadcast/Crc32Mpeg2.h"

#include <array>

namespace lab {

namespace {

std::array<std::uint32_t, 256> makeTable()
{
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i << 24;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 0x80000000u) ? (value << 1) ^ 0x04C11DB7u : value << 1;
        table[i] = value;
    }
    return table;
}

} // namespace

std::uint32_t Crc32Mpeg2::compute(const std::uint8_t *data, std::size_t length)
{
    static const std::array<std::uint32_t, 256> table = makeTable();
    std::uint32_t crc = 0xFFFFFFFFu;
    for (std::size_t i = 0; i < length; ++i)
        crc = (crc << 8) ^ table[((crc >> 24) ^ data[i]) & 0xFFu];
    return crc;
}

} // namespace lab
