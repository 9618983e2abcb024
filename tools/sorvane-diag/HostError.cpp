#include "HostError.h"

#include <cwchar>

namespace sorvane {
namespace diag {

HostError::HostError(const std::wstring &what, HRESULT hr) : m_message(what + L" failed: " + describe(hr)) {}

std::wstring HostError::describe(HRESULT hr)
{
    wchar_t code[16];
    swprintf(code, 16, L"0x%08lX", static_cast<unsigned long>(hr));
    std::wstring text(code);

    wchar_t *message = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, static_cast<DWORD>(hr), 0, reinterpret_cast<wchar_t *>(&message), 0, nullptr);
    if (length && message) {
        std::wstring sentence(message, length);
        while (!sentence.empty() && (sentence.back() == L'\n' || sentence.back() == L'\r' || sentence.back() == L' '))
            sentence.pop_back();
        text += L" " + sentence;
    }
    if (message)
        LocalFree(message);
    return text;
}

} // namespace diag
} // namespace sorvane
