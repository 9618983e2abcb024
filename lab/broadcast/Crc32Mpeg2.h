// The CRC-32 that closes every MPEG-2 PSI section (polynomial 0x04C11DB7, initial value
// 0xFFFFFFFF, no reflection, no final inversion). Run over a whole section including its CRC
// field, it gives 0.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lab {

class Crc32Mpeg2 {
public:
    static std::uint32_t compute(const std::uint8_t *data, std::size_t length);
};

} // namespace lab
