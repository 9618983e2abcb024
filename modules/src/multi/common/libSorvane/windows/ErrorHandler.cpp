#include "ErrorHandler.h"

#include <windows.h>

namespace sorvane {

kel::String ErrorHandler::errorMessageFromHr(long code)
{
    kel::String text;
    wchar_t *message = nullptr;
    const DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    const DWORD length =
        FormatMessageW(flags, nullptr, static_cast<DWORD>(code), MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                       reinterpret_cast<wchar_t *>(&message), 0, nullptr);
    if (length && message)
        text = kel::String(L"SYS: ") + kel::String(message);
    if (message)
        LocalFree(message);
    text = text.trim();
    text += kel::String(L" (hr=0x") + kel::String::hex(static_cast<uint32_t>(code), true) + L")";
    return text;
}

} // namespace sorvane
