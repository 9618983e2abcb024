// Fuzzer input as text: two bytes a character, so every UTF-16 code unit can occur.
#pragma once

#include <kel/String.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

inline kel::String utf16Text(const uint8_t *data, size_t size)
{
    std::wstring text;
    for (size_t i = 0; i + 1 < size; i += 2)
        text += static_cast<wchar_t>(data[i] | (data[i + 1] << 8));
    return kel::String(text);
}

} // namespace fuzz
