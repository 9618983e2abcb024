// How the lab's journal writes an HRESULT: "0x800705AA".
#pragma once

#include <windows.h>
#include <cwchar>
#include <string>

namespace lab {

inline std::wstring hresultText(HRESULT hr)
{
    wchar_t text[16] = {};
    std::swprintf(text, 16, L"0x%08lX", static_cast<unsigned long>(hr));
    return text;
}

} // namespace lab
