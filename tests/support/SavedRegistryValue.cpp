#include "SavedRegistryValue.h"

#include <windows.h>

namespace sorvane {
namespace test {

SavedRegistryValue::SavedRegistryValue(const wchar_t *key, const wchar_t *name)
    : m_key(key), m_name(name), m_present(false)
{
    m_present = read(m_value);
}

SavedRegistryValue::~SavedRegistryValue()
{
    if (m_present)
        set(m_value);
    else
        remove();
}

void SavedRegistryValue::set(const std::wstring &value) const
{
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, m_key, m_name, REG_SZ, value.c_str(),
                    static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

void SavedRegistryValue::remove() const
{
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, m_key, m_name);
}

bool SavedRegistryValue::read(std::wstring &value) const
{
    wchar_t buffer[1024] = {};
    DWORD size = sizeof buffer;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, m_key, m_name, RRF_RT_REG_SZ, nullptr, buffer, &size) != ERROR_SUCCESS)
        return false;
    value = buffer;
    return true;
}

} // namespace test
} // namespace sorvane
