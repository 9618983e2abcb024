#include "HexDump.h"

namespace sorvane {

namespace {

const int kBytesPerRow = 8;
const char kHexDigits[] = "0123456789ABCDEF";
const char *const kColumnIndent = "    ";

char printable(unsigned char byte)
{
    return byte >= 0x20 && byte <= 0x7E ? static_cast<char>(byte) : '.';
}

} // namespace

std::string HexDump::format(const unsigned char *data, int length)
{
    std::string result;
    if (length < 1)
        return result;
    result.reserve(static_cast<size_t>(length) * 6 + static_cast<size_t>(length / kBytesPerRow) * 13);
    std::string column;
    for (int i = 0; i < length; ++i) {
        if (i % kBytesPerRow == 0)
            column = kColumnIndent;
        result += "0x";
        result += kHexDigits[data[i] >> 4];
        result += kHexDigits[data[i] & 0x0F];
        result += ' ';
        column += printable(data[i]);
        if (i % kBytesPerRow == kBytesPerRow - 1) {
            result += column;
            result += '\n';
        }
    }
    return result;
}

} // namespace sorvane
