// UTF-8 of a wide string, for the lab's files and messages in narrow text.
#pragma once

#include <windows.h>

#include <string>

namespace lab {

inline std::string utf8(const std::wstring &text)
{
    if (text.empty())
        return std::string();
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), &result[0], length, nullptr, nullptr);
    return result;
}

} // namespace lab
