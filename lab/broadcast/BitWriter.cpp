#include "broadcast/BitWriter.h"

namespace lab {

void BitWriter::put(std::uint32_t value, int count)
{
    for (int bit = count - 1; bit >= 0; --bit) {
        if (m_free == 0) {
            m_out.push_back(0);
            m_free = 8;
        }
        --m_free;
        if ((value >> bit) & 1u)
            m_out.back() = static_cast<std::uint8_t>(m_out.back() | (1u << m_free));
    }
}

void BitWriter::align()
{
    m_free = 0;
}

void BitWriter::append(const std::vector<std::uint8_t> &bytes)
{
    align();
    m_out.insert(m_out.end(), bytes.begin(), bytes.end());
}

void BitWriter::startCode(std::uint8_t code)
{
    align();
    put(0x000001, 24);
    put(code, 8);
}

} // namespace lab
