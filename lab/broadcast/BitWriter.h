// Writes a bit string most significant bit first, as MPEG headers and variable-length codes are
// laid out, into bytes.
#pragma once

#include <cstdint>
#include <vector>

namespace lab {

class BitWriter {
public:
    explicit BitWriter(std::vector<std::uint8_t> &out) : m_out(out) {}

    // The low `count` bits of value (count up to 32).
    void put(std::uint32_t value, int count);
    // A start code (00 00 01 code), after zero bits up to the next byte.
    void startCode(std::uint8_t code);
    // Zero bits up to the next byte boundary.
    void align();
    // Whole bytes, after zero bits up to the next byte.
    void append(const std::vector<std::uint8_t> &bytes);

private:
    std::vector<std::uint8_t> &m_out;
    int m_free = 0; // bits still free in the last byte
};

} // namespace lab
