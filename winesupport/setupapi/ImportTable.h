// The import address table of a loaded module: where its calls into another DLL go.
#pragma once

#include <windows.h>

namespace winesupport {

class ImportTable {
public:
    explicit ImportTable(HMODULE module);

    // Points the module's imports of dll!function at replacement; returns how many entries
    // changed (0 when the module does not import the function by name).
    int redirect(const char *dll, const char *function, const void *replacement) const;

private:
    int redirectIn(const IMAGE_IMPORT_DESCRIPTOR &import, const char *function, const void *replacement) const;
    static void write(ULONG_PTR *entry, const void *replacement);

    BYTE *m_base;
};

} // namespace winesupport
