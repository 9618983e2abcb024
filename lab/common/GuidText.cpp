#include "common/GuidText.h"

#include <objbase.h>

namespace lab {

std::wstring guidText(const GUID &guid)
{
    wchar_t text[40] = {};
    StringFromGUID2(guid, text, 40);
    return text;
}

bool parseGuid(const std::wstring &text, GUID &guid)
{
    return SUCCEEDED(CLSIDFromString(text.c_str(), &guid));
}

} // namespace lab
