// The tables of baseline JPEG (ITU T.81 Annex K) that the lab's encoder writes and its decoder
// assumes when a motion-JPEG frame carries no Huffman tables of its own.
#pragma once

#include <windows.h>

namespace lab {

struct HuffmanTable {
    BYTE counts[16]; // codes of each length 1..16
    const BYTE *values;
    int valueCount;
};

class JpegTables {
public:
    static const BYTE kZigzag[64];
    static const BYTE kLumaQuant[64];
    static const BYTE kChromaQuant[64];
    static const HuffmanTable kLumaDc;
    static const HuffmanTable kLumaAc;
    static const HuffmanTable kChromaDc;
    static const HuffmanTable kChromaAc;
};

} // namespace lab
