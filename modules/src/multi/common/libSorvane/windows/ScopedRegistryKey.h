// Owns an open registry key and closes it.
#pragma once

#include <windows.h>

namespace sorvane {

class ScopedRegistryKey {
public:
    ScopedRegistryKey();
    ~ScopedRegistryKey();
    ScopedRegistryKey(const ScopedRegistryKey&) = delete;
    ScopedRegistryKey& operator=(const ScopedRegistryKey&) = delete;

    HKEY get() const { return m_key; }
    // For RegOpenKeyExW's out-parameter: closes what is held and hands out the slot.
    HKEY* receive();

private:
    void close();
    HKEY m_key;
};

} // namespace sorvane
