#include "broadcast/IntraPictureCoder.h"

namespace lab {

namespace {

const int kQuantiserScaleCode = 8; // no AC coefficients: any scale decodes the same
const int kDcReset = 128;          // the DC predictors' value at a slice start, 8-bit precision

struct Code {
    std::uint32_t bits;
    int length;
};

// dct_dc_size_luminance and dct_dc_size_chrominance, sizes 0 to 11.
const Code kLumaDcSize[12] = {{0x4, 3},  {0x0, 2},  {0x1, 2},  {0x5, 3},  {0x6, 3},   {0xE, 4},
                              {0x1E, 5}, {0x3E, 6}, {0x7E, 7}, {0xFE, 8}, {0x1FE, 9}, {0x1FF, 9}};
const Code kChromaDcSize[12] = {{0x0, 2},  {0x1, 2},  {0x2, 2},  {0x6, 3},   {0xE, 4},    {0x1E, 5},
                                {0x3E, 6}, {0x7E, 7}, {0xFE, 8}, {0x1FE, 9}, {0x3FE, 10}, {0x3FF, 10}};
const Code kEndOfBlock = {0x2, 2};

// BT.601 studio range, as broadcast video carries it (the offsets keep every sum positive).
int lumaOf(const Rgb &c)
{
    return (66 * c.r + 129 * c.g + 25 * c.b + 16 * 256 + 128) / 256;
}
int blueDifferenceOf(const Rgb &c)
{
    return (-38 * c.r - 74 * c.g + 112 * c.b + 128 * 256 + 128) / 256;
}
int redDifferenceOf(const Rgb &c)
{
    return (112 * c.r - 94 * c.g - 18 * c.b + 128 * 256 + 128) / 256;
}

int sizeOf(int difference)
{
    int magnitude = difference < 0 ? -difference : difference;
    int size = 0;
    for (; magnitude > 0; magnitude >>= 1)
        ++size;
    return size;
}

} // namespace

void IntraPictureCoder::code(const ChannelPicture &picture, BitWriter &out)
{
    const int changing = (ChannelPicture::kChangingRows + 15) / 16;
    for (int row = 0; row < changing && row * 16 < picture.height(); ++row)
        slice(picture, row, out);
    out.append(stillSlices(picture, changing));
}

const std::vector<std::uint8_t> &IntraPictureCoder::stillSlices(const ChannelPicture &picture, int firstRow)
{
    const StillKey key = {picture.width(), picture.height(), picture.label().channel, picture.label().program};
    const auto found = m_still.find(key);
    if (found != m_still.end())
        return found->second;
    std::vector<std::uint8_t> &slices = m_still[key];
    BitWriter bits(slices);
    const int rows = (picture.height() + 15) / 16;
    for (int row = firstRow; row < rows; ++row)
        slice(picture, row, bits);
    return slices;
}

IntraPictureCoder::Means IntraPictureCoder::macroblockMeans(const ChannelPicture &picture, int left, int top)
{
    Means means = {{0, 0, 0, 0}, 0, 0};
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            const Rgb colour = picture.at(left + x, top + y);
            means.luma[(y / 8) * 2 + x / 8] += lumaOf(colour);
            means.blueDifference += blueDifferenceOf(colour);
            means.redDifference += redDifferenceOf(colour);
        }
    }
    for (int &luma : means.luma)
        luma = (luma + 32) / 64;
    means.blueDifference = (means.blueDifference + 128) / 256;
    means.redDifference = (means.redDifference + 128) / 256;
    return means;
}

void IntraPictureCoder::slice(const ChannelPicture &picture, int row, BitWriter &out)
{
    // Pictures taller than 2800 lines carry the row's high bits after the start code.
    out.startCode(static_cast<std::uint8_t>(1 + (picture.height() > 2800 ? row & 0x7F : row)));
    if (picture.height() > 2800)
        out.put(static_cast<std::uint32_t>(row >> 7), 3);
    out.put(kQuantiserScaleCode, 5);
    out.put(0, 1); // extra_bit_slice
    int luma = kDcReset;
    int blue = kDcReset;
    int red = kDcReset;
    const int columns = (picture.width() + 15) / 16;
    for (int column = 0; column < columns; ++column) {
        out.put(1, 1); // macroblock_address_increment 1
        out.put(1, 1); // macroblock_type: intra
        const Means means = macroblockMeans(picture, column * 16, row * 16);
        for (const int value : means.luma)
            block(value, luma, false, out);
        block(means.blueDifference, blue, true, out);
        block(means.redDifference, red, true, out);
    }
}

void IntraPictureCoder::block(int value, int &predictor, bool chroma, BitWriter &out)
{
    const int difference = value - predictor;
    const int size = sizeOf(difference);
    const Code &code = chroma ? kChromaDcSize[size] : kLumaDcSize[size];
    out.put(code.bits, code.length);
    if (size > 0)
        out.put(static_cast<std::uint32_t>(difference > 0 ? difference : difference + (1 << size) - 1), size);
    out.put(kEndOfBlock.bits, kEndOfBlock.length);
    predictor = value;
}

} // namespace lab
