// Owns an open registry key and closes it.
#pragma once

#include <kel/String.h>
#include <windows.h>

namespace sorvane {

class ScopedRegistryKey {
public:
    ScopedRegistryKey();
    ~ScopedRegistryKey();
    ScopedRegistryKey(const ScopedRegistryKey &) = delete;
    ScopedRegistryKey &operator=(const ScopedRegistryKey &) = delete;

    // Opens `path` under `parent` for reading; the system's status code.
    LONG open(HKEY parent, const kel::String &path);
    HKEY get() const { return m_key; }
    // For RegOpenKeyExW's out-parameter: closes what is held and hands out the slot.
    HKEY *receive();
    // The key's default value as text; `status` is the system's status code.
    kel::String defaultValue(LONG &status) const;

private:
    void close();
    HKEY m_key;
};

} // namespace sorvane
