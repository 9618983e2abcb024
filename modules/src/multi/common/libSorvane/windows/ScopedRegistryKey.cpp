#include "ScopedRegistryKey.h"

#include <string>

namespace sorvane {

ScopedRegistryKey::ScopedRegistryKey() : m_key(nullptr) {}

ScopedRegistryKey::~ScopedRegistryKey()
{
    close();
}

LONG ScopedRegistryKey::open(HKEY parent, const kel::String &path)
{
    return RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, receive());
}

HKEY *ScopedRegistryKey::receive()
{
    close();
    return &m_key;
}

void ScopedRegistryKey::close()
{
    if (m_key)
        RegCloseKey(m_key);
    m_key = nullptr;
}

kel::String ScopedRegistryKey::defaultValue(LONG &status) const
{
    DWORD type = 0;
    DWORD bytes = 0;
    status = RegQueryValueExW(m_key, nullptr, nullptr, &type, nullptr, &bytes);
    if (status != ERROR_SUCCESS)
        return kel::String();
    // One more character keeps the text terminated whatever the registry holds.
    std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
    status = RegQueryValueExW(m_key, nullptr, nullptr, &type, reinterpret_cast<BYTE *>(&text[0]), &bytes);
    if (status != ERROR_SUCCESS)
        return kel::String();
    return kel::String(text.c_str());
}

} // namespace sorvane
