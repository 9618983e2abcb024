#include "decoders/JpegDecoder.h"

#include <cmath>
#include <cstring>

#include "common/JpegTables.h"

namespace lab {

namespace {

const double kPi = 3.14159265358979323846;

unsigned readWord(const BYTE *p) { return (static_cast<unsigned>(p[0]) << 8) | p[1]; }

BYTE clampByte(float value)
{
    if (value <= 0.0f)
        return 0;
    if (value >= 255.0f)
        return 255;
    return static_cast<BYTE>(value + 0.5f);
}

} // namespace

JpegDecoder::JpegDecoder()
{
    for (int u = 0; u < 8; ++u) {
        const double c = u == 0 ? std::sqrt(0.125) : 0.5;
        for (int x = 0; x < 8; ++x)
            m_cosine[u][x] = static_cast<float>(c * std::cos((2 * x + 1) * u * kPi / 16.0));
    }
}

bool JpegDecoder::decode(const BYTE *data, size_t length, int width, int height, BYTE *out, long stride, int pixelBytes,
                         bool bottomUp)
{
    for (Huffman &table : m_dc)
        table.present = false;
    for (Huffman &table : m_ac)
        table.present = false;
    m_components.clear();
    m_restartInterval = 0;
    m_width = 0;
    m_height = 0;
    size_t scanStart = 0;
    if (!data || length < 4 || !readSegments(data, length, scanStart))
        return false;
    if (m_width != width || m_height != height)
        return false;
    if (!decodeScan(data + scanStart, length - scanStart))
        return false;
    writePixels(width, height, out, stride, pixelBytes, bottomUp);
    return true;
}

// Reads the marker segments up to the start of the scan data.
bool JpegDecoder::readSegments(const BYTE *data, size_t length, size_t &scanStart)
{
    if (data[0] != 0xFF || data[1] != 0xD8)
        return false;
    size_t position = 2;
    while (position + 4 <= length) {
        if (data[position] != 0xFF)
            return false;
        const BYTE marker = data[position + 1];
        if (marker == 0xFF) {
            ++position;
            continue;
        }
        const size_t segmentLength = readWord(data + position + 2);
        if (segmentLength < 2 || position + 2 + segmentLength > length)
            return false;
        const BYTE *segment = data + position + 4;
        const size_t payload = segmentLength - 2;
        bool ok = true;
        switch (marker) {
        case 0xDB:
            ok = readQuantTables(segment, payload);
            break;
        case 0xC0:
        case 0xC1:
            ok = readFrame(segment, payload);
            break;
        case 0xC4:
            ok = readHuffmanTables(segment, payload);
            break;
        case 0xDD:
            ok = payload >= 2;
            if (ok)
                m_restartInterval = static_cast<int>(readWord(segment));
            break;
        case 0xDA:
            if (!readScan(segment, payload))
                return false;
            scanStart = position + 2 + segmentLength;
            return true;
        default:
            // Progressive, lossless and arithmetic frames are not for this decoder.
            ok = !(marker >= 0xC2 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC);
            break;
        }
        if (!ok)
            return false;
        position += 2 + segmentLength;
    }
    return false;
}

bool JpegDecoder::readQuantTables(const BYTE *segment, size_t length)
{
    size_t position = 0;
    while (position < length) {
        const int precision = segment[position] >> 4;
        const int id = segment[position] & 0x0F;
        const size_t size = precision ? 128 : 64;
        if (id > 3 || position + 1 + size > length)
            return false;
        for (int i = 0; i < 64; ++i) {
            const BYTE *value = segment + position + 1 + (precision ? i * 2 : i);
            m_quant[id][JpegTables::kZigzag[i]] = static_cast<unsigned short>(precision ? readWord(value) : *value);
        }
        position += 1 + size;
    }
    return true;
}

bool JpegDecoder::readFrame(const BYTE *segment, size_t length)
{
    if (length < 6 || segment[0] != 8)
        return false;
    m_height = static_cast<int>(readWord(segment + 1));
    m_width = static_cast<int>(readWord(segment + 3));
    const int count = segment[5];
    if ((count != 1 && count != 3) || length < 6 + static_cast<size_t>(count) * 3)
        return false;
    m_components.assign(static_cast<size_t>(count), Component());
    m_maxH = 1;
    m_maxV = 1;
    for (int i = 0; i < count; ++i) {
        Component &component = m_components[static_cast<size_t>(i)];
        const BYTE *componentInfo = segment + 6 + i * 3;
        component.id = componentInfo[0];
        component.h = componentInfo[1] >> 4;
        component.v = componentInfo[1] & 0x0F;
        component.quant = componentInfo[2] & 0x03;
        if (component.h < 1 || component.h > 2 || component.v < 1 || component.v > 2)
            return false;
        m_maxH = component.h > m_maxH ? component.h : m_maxH;
        m_maxV = component.v > m_maxV ? component.v : m_maxV;
    }
    return m_width > 0 && m_height > 0;
}

bool JpegDecoder::readHuffmanTables(const BYTE *segment, size_t length)
{
    size_t position = 0;
    while (position + 17 <= length) {
        const int tableClass = segment[position] >> 4;
        const int id = segment[position] & 0x0F;
        const BYTE *counts = segment + position + 1;
        size_t total = 0;
        for (int i = 0; i < 16; ++i)
            total += counts[i];
        if (id > 3 || tableClass > 1 || position + 17 + total > length || total > 256)
            return false;
        buildHuffman(counts, segment + position + 17, total, tableClass ? m_ac[id] : m_dc[id]);
        position += 17 + total;
    }
    return position == length;
}

bool JpegDecoder::readScan(const BYTE *segment, size_t length)
{
    if (m_components.empty() || length < 1)
        return false;
    const size_t count = segment[0];
    // One interleaved scan with every component: what baseline motion JPEG uses.
    if (count != m_components.size() || length < 1 + count * 2 + 3)
        return false;
    for (size_t i = 0; i < count; ++i) {
        const BYTE id = segment[1 + i * 2];
        const BYTE tables = segment[2 + i * 2];
        bool found = false;
        for (Component &component : m_components) {
            if (component.id != id)
                continue;
            component.dcTable = (tables >> 4) & 0x03;
            component.acTable = tables & 0x03;
            found = true;
        }
        if (!found)
            return false;
    }
    bool anyTables = false;
    for (const Huffman &table : m_dc)
        anyTables = anyTables || table.present;
    if (!anyTables)
        useStandardTables();
    return true;
}

void JpegDecoder::buildHuffman(const BYTE counts[16], const BYTE *values, size_t valueCount, Huffman &table)
{
    table.values.assign(values, values + valueCount);
    int code = 0;
    int index = 0;
    for (int length = 1; length <= 16; ++length) {
        table.valueIndex[length] = index;
        table.minCode[length] = code;
        code += counts[length - 1];
        index += counts[length - 1];
        table.maxCode[length] = counts[length - 1] ? code - 1 : -1;
        code <<= 1;
    }
    table.maxCode[17] = 0x7FFFFFFF;
    table.present = true;
}

void JpegDecoder::useStandardTables()
{
    const HuffmanTable *tables[4] = {&JpegTables::kLumaDc, &JpegTables::kLumaAc, &JpegTables::kChromaDc,
                                   &JpegTables::kChromaAc};
    buildHuffman(tables[0]->counts, tables[0]->values, static_cast<size_t>(tables[0]->valueCount), m_dc[0]);
    buildHuffman(tables[1]->counts, tables[1]->values, static_cast<size_t>(tables[1]->valueCount), m_ac[0]);
    buildHuffman(tables[2]->counts, tables[2]->values, static_cast<size_t>(tables[2]->valueCount), m_dc[1]);
    buildHuffman(tables[3]->counts, tables[3]->values, static_cast<size_t>(tables[3]->valueCount), m_ac[1]);
}

bool JpegDecoder::decodeScan(const BYTE *data, size_t length)
{
    m_data = data;
    m_length = length;
    m_position = 0;
    m_bits = 0;
    m_bitCount = 0;
    m_failed = false;
    const int mcuWidth = 8 * m_maxH;
    const int mcuHeight = 8 * m_maxV;
    const int mcusAcross = (m_width + mcuWidth - 1) / mcuWidth;
    const int mcusDown = (m_height + mcuHeight - 1) / mcuHeight;
    for (Component &component : m_components) {
        if (!m_dc[component.dcTable].present || !m_ac[component.acTable].present)
            return false;
        component.planeWidth = mcusAcross * component.h * 8;
        component.plane.assign(static_cast<size_t>(component.planeWidth) * static_cast<size_t>(mcusDown * component.v * 8), 0);
        component.previousDc = 0;
    }
    int untilRestart = m_restartInterval;
    for (int my = 0; my < mcusDown; ++my) {
        for (int mx = 0; mx < mcusAcross; ++mx) {
            if (m_restartInterval && untilRestart == 0) {
                if (!restart())
                    return false;
                untilRestart = m_restartInterval;
            }
            for (Component &component : m_components) {
                for (int v = 0; v < component.v; ++v) {
                    for (int h = 0; h < component.h; ++h) {
                        if (!decodeBlock(component, (mx * component.h + h) * 8, (my * component.v + v) * 8))
                            return false;
                    }
                }
            }
            --untilRestart;
        }
    }
    return !m_failed;
}

bool JpegDecoder::restart()
{
    m_bits = 0;
    m_bitCount = 0;
    while (m_position + 1 < m_length && !(m_data[m_position] == 0xFF && m_data[m_position + 1] >= 0xD0 &&
                                          m_data[m_position + 1] <= 0xD7))
        ++m_position;
    if (m_position + 1 >= m_length)
        return false;
    m_position += 2;
    for (Component &component : m_components)
        component.previousDc = 0;
    return true;
}

bool JpegDecoder::decodeBlock(Component &component, int x, int y)
{
    float coefficients[64] = {};
    const unsigned short *quant = m_quant[component.quant];
    const int dcSize = decodeSymbol(m_dc[component.dcTable]);
    if (dcSize < 0 || dcSize > 11)
        return false;
    component.previousDc += readBits(dcSize);
    coefficients[0] = static_cast<float>(component.previousDc * quant[0]);
    for (int k = 1; k < 64;) {
        const int symbol = decodeSymbol(m_ac[component.acTable]);
        if (symbol < 0)
            return false;
        const int run = symbol >> 4;
        const int size = symbol & 0x0F;
        if (size == 0) {
            if (run != 15)
                break;
            k += 16;
            continue;
        }
        k += run;
        if (k > 63)
            return false;
        const int natural = JpegTables::kZigzag[k];
        coefficients[natural] = static_cast<float>(readBits(size) * quant[natural]);
        ++k;
    }
    if (m_failed)
        return false;

    // Separable inverse DCT: columns, then rows.
    float columns[64];
    for (int u = 0; u < 8; ++u) {
        for (int row = 0; row < 8; ++row) {
            float sum = 0.0f;
            for (int v = 0; v < 8; ++v)
                sum += m_cosine[v][row] * coefficients[v * 8 + u];
            columns[row * 8 + u] = sum;
        }
    }
    for (int row = 0; row < 8; ++row) {
        BYTE *target = component.plane.data() + static_cast<size_t>(y + row) * static_cast<size_t>(component.planeWidth) +
                       static_cast<size_t>(x);
        for (int column = 0; column < 8; ++column) {
            float sum = 0.0f;
            for (int u = 0; u < 8; ++u)
                sum += m_cosine[u][column] * columns[row * 8 + u];
            target[column] = clampByte(sum + 128.0f);
        }
    }
    return true;
}

int JpegDecoder::decodeSymbol(const Huffman &table)
{
    int code = 0;
    for (int length = 1; length <= 16; ++length) {
        code = (code << 1) | readBit();
        if (table.maxCode[length] >= 0 && code <= table.maxCode[length] && code >= table.minCode[length]) {
            const size_t index = static_cast<size_t>(table.valueIndex[length] + code - table.minCode[length]);
            return index < table.values.size() ? table.values[index] : -1;
        }
    }
    m_failed = true;
    return -1;
}

int JpegDecoder::readBits(int count)
{
    if (count == 0)
        return 0;
    int value = 0;
    for (int i = 0; i < count; ++i)
        value = (value << 1) | readBit();
    // Values whose top bit is clear are negative (T.81 F.2.2.1).
    if (value < (1 << (count - 1)))
        value -= (1 << count) - 1;
    return value;
}

int JpegDecoder::readBit()
{
    if (m_bitCount == 0) {
        BYTE byte = 0;
        if (m_position < m_length && m_data[m_position] == 0xFF && m_position + 1 < m_length &&
            m_data[m_position + 1] != 0x00) {
            byte = 0; // a marker: pad with zeros
        } else if (m_position < m_length) {
            byte = m_data[m_position++];
            if (byte == 0xFF)
                ++m_position; // the stuffed zero
        } else {
            m_failed = true;
        }
        m_bits = byte;
        m_bitCount = 8;
    }
    --m_bitCount;
    return static_cast<int>((m_bits >> m_bitCount) & 1u);
}

void JpegDecoder::writePixels(int width, int height, BYTE *out, long stride, int pixelBytes, bool bottomUp) const
{
    const bool colour = m_components.size() == 3;
    for (int y = 0; y < height; ++y) {
        BYTE *row = out + stride * (bottomUp ? height - 1 - y : y);
        for (int x = 0; x < width; ++x) {
            float sample[3] = {0.0f, 128.0f, 128.0f};
            for (size_t c = 0; c < m_components.size(); ++c) {
                const Component &component = m_components[c];
                const int cx = x * component.h / m_maxH;
                const int cy = y * component.v / m_maxV;
                sample[c] = component.plane[static_cast<size_t>(cy) * static_cast<size_t>(component.planeWidth) +
                                            static_cast<size_t>(cx)];
            }
            const float luma = sample[0];
            const float blue = colour ? sample[1] - 128.0f : 0.0f;
            const float red = colour ? sample[2] - 128.0f : 0.0f;
            BYTE *pixel = row + x * pixelBytes;
            pixel[0] = clampByte(luma + 1.772f * blue);
            pixel[1] = clampByte(luma - 0.344136f * blue - 0.714136f * red);
            pixel[2] = clampByte(luma + 1.402f * red);
            if (pixelBytes == 4)
                pixel[3] = 0xFF;
        }
    }
}

} // namespace lab
