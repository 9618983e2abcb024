// The little of <windows.h> that the framework's portable text code uses, for native builds of
// the fuzzers: UTF-8 conversion between narrow and wide text (wchar_t is UTF-32 on Linux).
#pragma once

#include <cwchar>
#include <string>

#define CP_UTF8 65001u

inline int MultiByteToWideChar(unsigned, unsigned long, const char *text, int bytes, wchar_t *out, int capacity)
{
    const std::string narrow = bytes < 0 ? std::string(text) + '\0' : std::string(text, static_cast<size_t>(bytes));
    std::mbstate_t state{};
    int count = 0;
    for (size_t at = 0; at < narrow.size();) {
        wchar_t c = 0;
        size_t used = std::mbrtowc(&c, narrow.data() + at, narrow.size() - at, &state);
        if (used == 0)
            used = 1;
        if (used == static_cast<size_t>(-1) || used == static_cast<size_t>(-2)) {
            c = 0xFFFD;
            used = 1;
            state = std::mbstate_t{};
        }
        if (out && count < capacity)
            out[count] = c;
        ++count;
        at += used;
    }
    return count;
}

inline int WideCharToMultiByte(unsigned, unsigned long, const wchar_t *text, int chars, char *out, int capacity,
                               const char *, int *)
{
    const std::wstring wide = chars < 0 ? std::wstring(text) + L'\0' : std::wstring(text, static_cast<size_t>(chars));
    std::mbstate_t state{};
    int count = 0;
    char buffer[8];
    for (wchar_t c : wide) {
        size_t used = std::wcrtomb(buffer, c, &state);
        if (used == static_cast<size_t>(-1)) {
            buffer[0] = '?';
            used = 1;
            state = std::mbstate_t{};
        }
        for (size_t i = 0; i < used; ++i, ++count) {
            if (out && count < capacity)
                out[count] = buffer[i];
        }
    }
    return count;
}
