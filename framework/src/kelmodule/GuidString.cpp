#include <kelmodule/GuidString.h>

#include <cstdio>

namespace kelmodule {

kel::String guidToString(const GUID &guid)
{
    wchar_t text[40];
    swprintf(text, 40, L"{%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", static_cast<unsigned long>(guid.Data1),
             guid.Data2, guid.Data3, guid.Data4[0], guid.Data4[1], guid.Data4[2], guid.Data4[3], guid.Data4[4],
             guid.Data4[5], guid.Data4[6], guid.Data4[7]);
    return kel::String(text);
}

} // namespace kelmodule
