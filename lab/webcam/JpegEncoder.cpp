#include "webcam/JpegEncoder.h"

#include <cmath>
#include <cstdlib>

#include "common/JpegTables.h"

namespace lab {

namespace {

const double kPi = 3.14159265358979323846;

int magnitudeBits(int value)
{
    int magnitude = std::abs(value);
    int bits = 0;
    while (magnitude) {
        ++bits;
        magnitude >>= 1;
    }
    return bits;
}

void appendHuffmanTable(std::vector<BYTE> &payload, BYTE tableClassAndId, const HuffmanTable &table)
{
    payload.push_back(tableClassAndId);
    payload.insert(payload.end(), table.counts, table.counts + 16);
    payload.insert(payload.end(), table.values, table.values + table.valueCount);
}

} // namespace

JpegEncoder::JpegEncoder(int quality)
{
    const int scale = quality < 50 ? 5000 / quality : 200 - 2 * quality;
    const BYTE *bases[2] = {JpegTables::kLumaQuant, JpegTables::kChromaQuant};
    for (int table = 0; table < 2; ++table) {
        for (int i = 0; i < 64; ++i) {
            int value = (bases[table][i] * scale + 50) / 100;
            value = value < 1 ? 1 : (value > 255 ? 255 : value);
            m_quant[table][i] = static_cast<BYTE>(value);
            m_scale[table][i] = 1.0f / static_cast<float>(value);
        }
    }
    buildCodes(JpegTables::kLumaDc, m_dc[0]);
    buildCodes(JpegTables::kChromaDc, m_dc[1]);
    buildCodes(JpegTables::kLumaAc, m_ac[0]);
    buildCodes(JpegTables::kChromaAc, m_ac[1]);
    for (int u = 0; u < 8; ++u) {
        const double c = u == 0 ? std::sqrt(0.125) : 0.5;
        for (int x = 0; x < 8; ++x)
            m_cosine[u][x] = static_cast<float>(c * std::cos((2 * x + 1) * u * kPi / 16.0));
    }
}

void JpegEncoder::buildCodes(const HuffmanTable &table, Code *codes)
{
    unsigned code = 0;
    int index = 0;
    for (int length = 1; length <= 16; ++length) {
        for (int i = 0; i < table.counts[length - 1]; ++i) {
            codes[table.values[index++]] = Code{static_cast<WORD>(code), static_cast<BYTE>(length)};
            ++code;
        }
        code <<= 1;
    }
}

const std::vector<BYTE> &JpegEncoder::encode(const BYTE *rgb, int width, int height)
{
    m_out.clear();
    m_bitBuffer = 0;
    m_bitCount = 0;
    writeHeaders(width, height);
    toPlanes(rgb, width, height);
    int previous[3] = {0, 0, 0};
    const int chromaWidth = m_paddedWidth / 2;
    for (int y = 0; y < m_paddedHeight; y += 16) {
        for (int x = 0; x < m_paddedWidth; x += 16) {
            encodeBlock(m_luma.data(), m_paddedWidth, x, y, 0, previous[0]);
            encodeBlock(m_luma.data(), m_paddedWidth, x + 8, y, 0, previous[0]);
            encodeBlock(m_luma.data(), m_paddedWidth, x, y + 8, 0, previous[0]);
            encodeBlock(m_luma.data(), m_paddedWidth, x + 8, y + 8, 0, previous[0]);
            encodeBlock(m_blue.data(), chromaWidth, x / 2, y / 2, 1, previous[1]);
            encodeBlock(m_red.data(), chromaWidth, x / 2, y / 2, 1, previous[2]);
        }
    }
    flushBits();
    m_out.push_back(0xFF);
    m_out.push_back(0xD9);
    return m_out;
}

void JpegEncoder::writeMarker(BYTE marker, const std::vector<BYTE> &payload)
{
    const size_t length = payload.size() + 2;
    m_out.push_back(0xFF);
    m_out.push_back(marker);
    m_out.push_back(static_cast<BYTE>(length >> 8));
    m_out.push_back(static_cast<BYTE>(length & 0xFF));
    m_out.insert(m_out.end(), payload.begin(), payload.end());
}

void JpegEncoder::writeHeaders(int width, int height)
{
    m_out.push_back(0xFF);
    m_out.push_back(0xD8);
    writeMarker(0xE0, {'J', 'F', 'I', 'F', 0, 1, 1, 0, 0, 1, 0, 1, 0, 0});

    std::vector<BYTE> quant;
    for (BYTE table = 0; table < 2; ++table) {
        quant.push_back(table);
        for (int i = 0; i < 64; ++i)
            quant.push_back(m_quant[table][JpegTables::kZigzag[i]]);
    }
    writeMarker(0xDB, quant);

    const BYTE w1 = static_cast<BYTE>(width >> 8), w0 = static_cast<BYTE>(width & 0xFF);
    const BYTE h1 = static_cast<BYTE>(height >> 8), h0 = static_cast<BYTE>(height & 0xFF);
    writeMarker(0xC0, {8, h1, h0, w1, w0, 3, 1, 0x22, 0, 2, 0x11, 1, 3, 0x11, 1});

    std::vector<BYTE> huffman;
    appendHuffmanTable(huffman, 0x00, JpegTables::kLumaDc);
    appendHuffmanTable(huffman, 0x10, JpegTables::kLumaAc);
    appendHuffmanTable(huffman, 0x01, JpegTables::kChromaDc);
    appendHuffmanTable(huffman, 0x11, JpegTables::kChromaAc);
    writeMarker(0xC4, huffman);

    writeMarker(0xDA, {3, 1, 0x00, 2, 0x11, 3, 0x11, 0, 63, 0});
}

// Full-range YCbCr (JFIF), level-shifted, padded to whole 16x16 units by repeating the edge;
// chroma averaged over 2x2 pixels.
void JpegEncoder::toPlanes(const BYTE *rgb, int width, int height)
{
    m_paddedWidth = (width + 15) & ~15;
    m_paddedHeight = (height + 15) & ~15;
    const size_t lumaSize = static_cast<size_t>(m_paddedWidth) * static_cast<size_t>(m_paddedHeight);
    m_luma.assign(lumaSize, 0.0f);
    m_blue.assign(lumaSize / 4, 0.0f);
    m_red.assign(lumaSize / 4, 0.0f);
    const int chromaWidth = m_paddedWidth / 2;
    for (int y = 0; y < m_paddedHeight; ++y) {
        const int sourceY = y < height ? y : height - 1;
        for (int x = 0; x < m_paddedWidth; ++x) {
            const int sourceX = x < width ? x : width - 1;
            const BYTE *p = rgb + (static_cast<size_t>(sourceY) * static_cast<size_t>(width) + static_cast<size_t>(sourceX)) * 3;
            const float r = p[0], g = p[1], b = p[2];
            m_luma[static_cast<size_t>(y) * static_cast<size_t>(m_paddedWidth) + static_cast<size_t>(x)] =
                0.299f * r + 0.587f * g + 0.114f * b - 128.0f;
            const size_t chroma = static_cast<size_t>(y / 2) * static_cast<size_t>(chromaWidth) + static_cast<size_t>(x / 2);
            m_blue[chroma] += 0.25f * (-0.168736f * r - 0.331264f * g + 0.5f * b);
            m_red[chroma] += 0.25f * (0.5f * r - 0.418688f * g - 0.081312f * b);
        }
    }
}

void JpegEncoder::encodeBlock(const float *plane, int planeWidth, int x, int y, int table, int &previousDc)
{
    float rows[8][8];
    for (int v = 0; v < 8; ++v) {
        const float *line = plane + static_cast<size_t>(y + v) * static_cast<size_t>(planeWidth) + static_cast<size_t>(x);
        for (int u = 0; u < 8; ++u) {
            float sum = 0.0f;
            for (int k = 0; k < 8; ++k)
                sum += m_cosine[u][k] * line[k];
            rows[v][u] = sum;
        }
    }
    int coefficients[64];
    for (int u = 0; u < 8; ++u) {
        for (int v = 0; v < 8; ++v) {
            float sum = 0.0f;
            for (int k = 0; k < 8; ++k)
                sum += m_cosine[v][k] * rows[k][u];
            const int natural = v * 8 + u;
            coefficients[natural] = static_cast<int>(std::lround(sum * m_scale[table][natural]));
        }
    }

    const int dc = coefficients[0];
    encodeValue(dc - previousDc, m_dc[table][magnitudeBits(dc - previousDc)]);
    previousDc = dc;
    int zeros = 0;
    for (int i = 1; i < 64; ++i) {
        const int value = coefficients[JpegTables::kZigzag[i]];
        if (value == 0) {
            ++zeros;
            continue;
        }
        while (zeros > 15) {
            const Code &run = m_ac[table][0xF0];
            putBits(run.bits, run.length);
            zeros -= 16;
        }
        encodeValue(value, m_ac[table][(zeros << 4) | magnitudeBits(value)]);
        zeros = 0;
    }
    if (zeros > 0) {
        const Code &end = m_ac[table][0x00];
        putBits(end.bits, end.length);
    }
}

void JpegEncoder::encodeValue(int value, const Code &prefix)
{
    putBits(prefix.bits, prefix.length);
    const int bits = magnitudeBits(value);
    if (bits == 0)
        return;
    const unsigned extra = value < 0 ? static_cast<unsigned>(value - 1) & ((1u << bits) - 1) : static_cast<unsigned>(value);
    putBits(extra, bits);
}

void JpegEncoder::putBits(unsigned bits, int length)
{
    m_bitBuffer = (m_bitBuffer << length) | (bits & ((1u << length) - 1));
    m_bitCount += length;
    while (m_bitCount >= 8) {
        const BYTE byte = static_cast<BYTE>(m_bitBuffer >> (m_bitCount - 8));
        m_out.push_back(byte);
        if (byte == 0xFF)
            m_out.push_back(0x00);
        m_bitCount -= 8;
    }
}

void JpegEncoder::flushBits()
{
    if (m_bitCount > 0)
        putBits(0x7F, 8 - m_bitCount);
}

} // namespace lab
