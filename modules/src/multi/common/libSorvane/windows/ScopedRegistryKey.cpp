#include "ScopedRegistryKey.h"

namespace sorvane {

ScopedRegistryKey::ScopedRegistryKey() : m_key(nullptr) {}

ScopedRegistryKey::~ScopedRegistryKey()
{
    close();
}

HKEY* ScopedRegistryKey::receive()
{
    close();
    return &m_key;
}

void ScopedRegistryKey::close()
{
    if (m_key) RegCloseKey(m_key);
    m_key = nullptr;
}

} // namespace sorvane
