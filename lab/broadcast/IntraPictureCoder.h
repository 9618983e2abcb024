// Codes a picture as the slices of an MPEG-2 intra (I) frame picture, 4:2:0, one slice per
// macroblock row. Each 8x8 block carries its mean only (its DC coefficient, 8-bit precision,
// no AC coefficients): flat blocks, which is exactly what the lab picture's 16-pixel mark cells
// and its bars are made of. Any MPEG-2 decoder decodes the result. The slices below the rows
// that change from frame to frame are coded once per picture size, channel and program.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "broadcast/BitWriter.h"
#include "broadcast/ChannelPicture.h"

namespace lab {

class IntraPictureCoder {
public:
    // The slices of the picture, from the first slice start code on.
    void code(const ChannelPicture &picture, BitWriter &out);

private:
    // width, height, channel, program
    using StillKey = std::array<long, 4>;

    struct Means {
        int luma[4]; // the macroblock's four 8x8 luma blocks, left to right, top to bottom
        int blueDifference;
        int redDifference;
    };

    static Means macroblockMeans(const ChannelPicture &picture, int left, int top);
    static void slice(const ChannelPicture &picture, int row, BitWriter &out);
    // dct_dc_size and dct_dc_differential of a block whose predictor is `predictor`, then the
    // end of the block; the predictor becomes the block's value.
    static void block(int value, int &predictor, bool chroma, BitWriter &out);
    const std::vector<std::uint8_t> &stillSlices(const ChannelPicture &picture, int firstRow);

    std::map<StillKey, std::vector<std::uint8_t>> m_still;
};

} // namespace lab
