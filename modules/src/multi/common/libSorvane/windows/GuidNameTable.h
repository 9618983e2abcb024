// The SDK names of the DirectShow and BDA identifiers the library meets: media major types,
// subtypes, format types, filter and device categories, pin categories and filter classes.
// Log lines and capability keys use these names instead of raw GUIDs.
#pragma once

#include <guiddef.h>

namespace sorvane {

class GuidNameTable {
public:
    // The SDK name of `id` ("MEDIASUBTYPE_YUY2"), or null when the table does not know it.
    static const wchar_t *find(const GUID &id);
};

} // namespace sorvane
