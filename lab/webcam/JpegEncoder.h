// A small baseline JPEG encoder (YCbCr 4:2:0, Annex K tables) for the lab's motion-JPEG
// cameras: every frame is a complete JFIF picture with its own tables.
#pragma once

#include <windows.h>
#include <vector>

#include "common/JpegTables.h"

namespace lab {

class JpegEncoder {
public:
    explicit JpegEncoder(int quality = 85);

    // Encodes a top-down RGB24 picture without row padding; the result lives until the next call.
    const std::vector<BYTE> &encode(const BYTE *rgb, int width, int height);

private:
    struct Code {
        WORD bits;
        BYTE length;
    };

    void writeHeaders(int width, int height);
    void writeMarker(BYTE marker, const std::vector<BYTE> &payload);
    void toPlanes(const BYTE *rgb, int width, int height);
    void encodeBlock(const float *plane, int planeWidth, int x, int y, int table, int &previousDc);
    void encodeValue(int value, const Code &prefix);
    void putBits(unsigned bits, int length);
    void flushBits();
    static void buildCodes(const HuffmanTable &table, Code *codes);

    BYTE m_quant[2][64];   // natural order
    float m_scale[2][64];  // 1 / (quantiser), natural order
    Code m_dc[2][12];
    Code m_ac[2][256];
    float m_cosine[8][8];
    int m_paddedWidth = 0;
    int m_paddedHeight = 0;
    std::vector<float> m_luma;
    std::vector<float> m_blue;
    std::vector<float> m_red;
    std::vector<BYTE> m_out;
    unsigned m_bitBuffer = 0;
    int m_bitCount = 0;
};

} // namespace lab
