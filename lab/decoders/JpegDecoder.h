// A baseline JPEG decoder for motion-JPEG frames: Huffman, 8-bit precision, one to three
// components with sampling factors up to 2, restart markers. Frames without Huffman tables
// (the AVI motion-JPEG convention) use the standard tables.
#pragma once

#include <windows.h>
#include <vector>

namespace lab {

class JpegDecoder {
public:
    JpegDecoder();

    // Decodes into BGR rows of 3 or 4 bytes per pixel; the picture must be width x height.
    // Returns false for anything it cannot read.
    bool decode(const BYTE *data, size_t length, int width, int height, BYTE *out, long stride, int pixelBytes,
                bool bottomUp);

private:
    struct Huffman {
        bool present = false;
        int minCode[17] = {};
        int maxCode[18] = {};
        int valueIndex[17] = {};
        std::vector<BYTE> values;
    };
    struct Component {
        int id = 0;
        int h = 1;
        int v = 1;
        int quant = 0;
        int dcTable = 0;
        int acTable = 0;
        int previousDc = 0;
        int planeWidth = 0;
        std::vector<BYTE> plane;
    };

    bool readSegments(const BYTE *data, size_t length, size_t &scanStart);
    bool readQuantTables(const BYTE *segment, size_t length);
    bool readFrame(const BYTE *segment, size_t length);
    bool readHuffmanTables(const BYTE *segment, size_t length);
    bool readScan(const BYTE *segment, size_t length);
    static void buildHuffman(const BYTE counts[16], const BYTE *values, size_t valueCount, Huffman &table);
    void useStandardTables();

    bool decodeScan(const BYTE *data, size_t length);
    bool decodeBlock(Component &component, int x, int y);
    int decodeSymbol(const Huffman &table);
    int readBits(int count);
    int readBit();
    bool restart();
    void writePixels(int width, int height, BYTE *out, long stride, int pixelBytes, bool bottomUp) const;

    float m_cosine[8][8];
    unsigned short m_quant[4][64] = {};
    Huffman m_dc[4];
    Huffman m_ac[4];
    std::vector<Component> m_components;
    int m_width = 0;
    int m_height = 0;
    int m_maxH = 1;
    int m_maxV = 1;
    int m_restartInterval = 0;

    // Entropy-coded data being read.
    const BYTE *m_data = nullptr;
    size_t m_length = 0;
    size_t m_position = 0;
    unsigned m_bits = 0;
    int m_bitCount = 0;
    bool m_failed = false;
};

} // namespace lab
