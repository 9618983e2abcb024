#include "broadcast/MpegVideoFrame.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace lab {

namespace {

const char kUserDataPrefix[] = "SORVANE-LAB ";

void startCode(std::vector<std::uint8_t> &out, std::uint8_t code)
{
    const std::uint8_t prefix[] = {0x00, 0x00, 0x01, code};
    out.insert(out.end(), prefix, prefix + 4);
}

void sequenceHeader(std::vector<std::uint8_t> &out, int width, int height)
{
    startCode(out, 0xB3);
    out.push_back(static_cast<std::uint8_t>(width >> 4));
    out.push_back(static_cast<std::uint8_t>(((width & 0x0F) << 4) | ((height >> 8) & 0x0F)));
    out.push_back(static_cast<std::uint8_t>(height & 0xFF));
    out.push_back(0x14); // aspect ratio 1:1, frame rate code 4 (30000/1001)
    // bit_rate 0x3FFFF (variable), marker, vbv_buffer_size 112, constrained 0, no matrices
    const std::uint8_t tail[] = {0xFF, 0xFF, 0xE0, 0xE0 | (112 >> 5), static_cast<std::uint8_t>((112 & 0x1F) << 3)};
    out.insert(out.end(), tail, tail + sizeof(tail));
}

void pictureHeader(std::vector<std::uint8_t> &out, unsigned long frame)
{
    startCode(out, 0x00);
    const unsigned temporalReference = static_cast<unsigned>(frame % 1024);
    out.push_back(static_cast<std::uint8_t>(temporalReference >> 2));
    out.push_back(static_cast<std::uint8_t>(((temporalReference & 0x03) << 6) | (1 << 3) | 0x07)); // I, vbv_delay
    out.push_back(0xFF);
    out.push_back(0xF8); // vbv_delay end, extra_bit_picture 0
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
    sequenceHeader(out, width, height);
    pictureHeader(out, label.frame);
    startCode(out, 0xB2);
    char text[96] = {};
    std::snprintf(text, sizeof(text), "%schannel=%d program=%d frame=%lu", kUserDataPrefix, label.channel,
                  label.program, label.frame);
    out.insert(out.end(), text, text + std::strlen(text));
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
