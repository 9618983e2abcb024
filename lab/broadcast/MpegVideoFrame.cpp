#include "broadcast/MpegVideoFrame.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "broadcast/BitWriter.h"

namespace lab {

namespace {

const char kUserDataPrefix[] = "SORVANE-LAB ";

// Nominal rate and decoder buffer of the sequence header: 2 Mbit/s (units of 400 bit/s) and
// Main level's 112 x 16 kbit.
const std::uint32_t kBitRateUnits = 5000;
const std::uint32_t kVbvBufferSize = 112;
const std::uint32_t kFrameRate2997 = 4;
const std::uint32_t kSquarePixels = 1;

// Main profile at the lowest level that holds the picture.
std::uint32_t profileAndLevel(int width, int height)
{
    if (width <= 720 && height <= 576)
        return 0x48;
    if (width <= 1440 && height <= 1152)
        return 0x46;
    return 0x44;
}

void sequenceHeader(BitWriter &bits, int width, int height)
{
    bits.startCode(0xB3);
    bits.put(static_cast<std::uint32_t>(width) & 0xFFF, 12);
    bits.put(static_cast<std::uint32_t>(height) & 0xFFF, 12);
    bits.put(kSquarePixels, 4);
    bits.put(kFrameRate2997, 4);
    bits.put(kBitRateUnits & 0x3FFFF, 18);
    bits.put(1, 1); // marker
    bits.put(kVbvBufferSize & 0x3FF, 10);
    bits.put(0, 3); // constrained_parameters_flag, default quantiser matrices
}

void sequenceExtension(BitWriter &bits, int width, int height)
{
    bits.startCode(0xB5);
    bits.put(0x1, 4); // sequence extension
    bits.put(profileAndLevel(width, height), 8);
    bits.put(1, 1); // progressive_sequence
    bits.put(1, 2); // chroma_format 4:2:0
    bits.put(static_cast<std::uint32_t>(width) >> 12, 2);
    bits.put(static_cast<std::uint32_t>(height) >> 12, 2);
    bits.put(kBitRateUnits >> 18, 12);
    bits.put(1, 1); // marker
    bits.put(kVbvBufferSize >> 10, 8);
    bits.put(1, 1); // low_delay: no B pictures
    bits.put(0, 7); // frame_rate_extension_n, _d
}

void pictureHeader(BitWriter &bits, unsigned long frame)
{
    bits.startCode(0x00);
    bits.put(static_cast<std::uint32_t>(frame % 1024), 10);
    bits.put(1, 3);       // I picture
    bits.put(0xFFFF, 16); // vbv_delay: not given
    bits.put(0, 1);       // extra_bit_picture
}

void pictureCodingExtension(BitWriter &bits)
{
    bits.startCode(0xB5);
    bits.put(0x8, 4);     // picture coding extension
    bits.put(0xFFFF, 16); // f_codes: no motion vectors in an I picture
    bits.put(0, 2);       // intra_dc_precision: 8 bits
    bits.put(3, 2);       // picture_structure: frame
    bits.put(0, 1);       // top_field_first
    bits.put(1, 1);       // frame_pred_frame_dct
    bits.put(0, 5);       // concealment vectors, q_scale_type, intra_vlc_format, alternate_scan, repeat_first_field
    bits.put(1, 1);       // chroma_420_type
    bits.put(1, 1);       // progressive_frame
    bits.put(0, 1);       // composite_display_flag
}

bool findStartCode(const std::uint8_t *data, std::size_t length, std::size_t from, std::uint8_t code, std::size_t &at)
{
    for (std::size_t i = from; i + 4 <= length; ++i) {
        if (data[i] == 0 && data[i + 1] == 0 && data[i + 2] == 1 && data[i + 3] == code) {
            at = i;
            return true;
        }
    }
    return false;
}

} // namespace

std::vector<std::uint8_t> MpegVideoFrame::build(int width, int height, const FrameLabel &label)
{
    std::vector<std::uint8_t> out;
    BitWriter bits(out);
    sequenceHeader(bits, width, height);
    sequenceExtension(bits, width, height);
    pictureHeader(bits, label.frame);
    pictureCodingExtension(bits);
    bits.startCode(0xB2);
    char text[96] = {};
    std::snprintf(text, sizeof(text), "%schannel=%d program=%d frame=%lu", kUserDataPrefix, label.channel,
                  label.program, label.frame);
    for (const char *c = text; *c; ++c)
        bits.put(static_cast<std::uint8_t>(*c), 8);
    m_coder.code(ChannelPicture(width, height, label), bits);
    return out;
}

bool MpegVideoFrame::read(const std::uint8_t *data, std::size_t length, FrameLabel &label, int &width, int &height)
{
    std::size_t at = 0;
    if (findStartCode(data, length, 0, 0xB3, at) && at + 7 <= length) {
        width = (data[at + 4] << 4) | (data[at + 5] >> 4);
        height = ((data[at + 5] & 0x0F) << 8) | data[at + 6];
    }
    if (!findStartCode(data, length, 0, 0xB2, at))
        return false;
    std::size_t end = at + 4;
    while (end < length && data[end] != 0)
        ++end;
    const std::string text(reinterpret_cast<const char *>(data) + at + 4, end - at - 4);
    if (text.compare(0, sizeof(kUserDataPrefix) - 1, kUserDataPrefix) != 0)
        return false;
    FrameLabel found;
    if (std::sscanf(text.c_str() + sizeof(kUserDataPrefix) - 1, "channel=%d program=%d frame=%lu", &found.channel,
                    &found.program, &found.frame) != 3)
        return false;
    label = found;
    return true;
}

} // namespace lab
