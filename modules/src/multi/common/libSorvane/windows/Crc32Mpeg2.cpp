#include "Crc32Mpeg2.h"

namespace sorvane {

namespace {

const uint32_t kPolynomial = 0x04C11DB7u;

struct CrcTable {
    uint32_t entries[256];

    CrcTable()
    {
        for (uint32_t i = 0; i < 256; ++i) {
            uint32_t crc = i << 24;
            for (int bit = 0; bit < 8; ++bit)
                crc = (crc & 0x80000000u) ? (crc << 1) ^ kPolynomial : crc << 1;
            entries[i] = crc;
        }
    }
};

const CrcTable &table()
{
    static const CrcTable instance;
    return instance;
}

} // namespace

uint32_t Crc32Mpeg2::compute(const unsigned char *data, int length)
{
    const uint32_t *entries = table().entries;
    uint32_t crc = 0xFFFFFFFFu;
    for (int i = 0; i < length; ++i)
        crc = (crc << 8) ^ entries[((crc >> 24) ^ data[i]) & 0xFF];
    return crc;
}

} // namespace sorvane
