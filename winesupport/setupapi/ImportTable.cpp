#include "setupapi/ImportTable.h"

#include <cstring>

namespace winesupport {

ImportTable::ImportTable(HMODULE module) : m_base(reinterpret_cast<BYTE *>(module)) {}

void ImportTable::write(ULONG_PTR *entry, const void *replacement)
{
    DWORD protection = 0;
    if (!VirtualProtect(entry, sizeof(*entry), PAGE_READWRITE, &protection))
        return;
    *entry = reinterpret_cast<ULONG_PTR>(replacement);
    VirtualProtect(entry, sizeof(*entry), protection, &protection);
}

int ImportTable::redirectIn(const IMAGE_IMPORT_DESCRIPTOR &import, const char *function, const void *replacement) const
{
    // The lookup table keeps the names; the address table beside it the bound addresses.
    const DWORD lookup = import.OriginalFirstThunk ? import.OriginalFirstThunk : import.FirstThunk;
    const auto *names = reinterpret_cast<const IMAGE_THUNK_DATA *>(m_base + lookup);
    auto *addresses = reinterpret_cast<IMAGE_THUNK_DATA *>(m_base + import.FirstThunk);
    int changed = 0;
    for (; names->u1.AddressOfData; ++names, ++addresses) {
        if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal))
            continue;
        const auto *byName = reinterpret_cast<const IMAGE_IMPORT_BY_NAME *>(m_base + names->u1.AddressOfData);
        if (std::strcmp(reinterpret_cast<const char *>(byName->Name), function) != 0)
            continue;
        write(reinterpret_cast<ULONG_PTR *>(&addresses->u1.Function), replacement);
        ++changed;
    }
    return changed;
}

int ImportTable::redirect(const char *dll, const char *function, const void *replacement) const
{
    const auto *dos = reinterpret_cast<const IMAGE_DOS_HEADER *>(m_base);
    const auto *nt = reinterpret_cast<const IMAGE_NT_HEADERS *>(m_base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY &directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (!directory.VirtualAddress)
        return 0;
    int changed = 0;
    for (const auto *import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR *>(m_base + directory.VirtualAddress);
         import->Name; ++import) {
        if (_stricmp(reinterpret_cast<const char *>(m_base + import->Name), dll) == 0)
            changed += redirectIn(*import, function, replacement);
    }
    return changed;
}

} // namespace winesupport
