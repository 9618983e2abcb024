// An open registry key that closes itself; the few writes and reads the lab needs.
#pragma once

#include <windows.h>
#include <string>
#include <vector>

namespace lab {

class RegistryKey {
public:
    RegistryKey() = default;
    ~RegistryKey();
    RegistryKey(const RegistryKey &) = delete;
    RegistryKey &operator=(const RegistryKey &) = delete;
    RegistryKey(RegistryKey &&other) noexcept;
    RegistryKey &operator=(RegistryKey &&other) noexcept;

    // Creates the key (and its parents) for writing.
    static LSTATUS create(HKEY root, const std::wstring &path, RegistryKey &out);
    static LSTATUS open(HKEY root, const std::wstring &path, REGSAM access, RegistryKey &out);
    // Deletes a key with everything below it; a missing key is no error.
    static LSTATUS removeTree(HKEY root, const std::wstring &path);

    LSTATUS setString(const wchar_t *name, const std::wstring &value) const;
    LSTATUS setDword(const wchar_t *name, DWORD value) const;
    LSTATUS setBinary(const wchar_t *name, const void *data, DWORD size) const;
    // A REG_MULTI_SZ: the strings in order, each ended by a null, the list by another.
    LSTATUS setMultiString(const wchar_t *name, const std::vector<std::wstring> &values) const;
    bool readString(const wchar_t *name, std::wstring &value) const;

    HKEY handle() const { return m_key; }

private:
    void close();
    HKEY m_key = nullptr;
};

} // namespace lab
