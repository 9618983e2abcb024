// GUIDs as registry text ("{XXXXXXXX-...}").
#pragma once

#include <windows.h>
#include <string>

namespace lab {

std::wstring guidText(const GUID &guid);
bool parseGuid(const std::wstring &text, GUID &guid);

} // namespace lab
