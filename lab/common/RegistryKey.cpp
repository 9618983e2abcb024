#include "common/RegistryKey.h"

#include <vector>

namespace lab {

RegistryKey::~RegistryKey()
{
    close();
}

RegistryKey::RegistryKey(RegistryKey &&other) noexcept : m_key(other.m_key)
{
    other.m_key = nullptr;
}

RegistryKey &RegistryKey::operator=(RegistryKey &&other) noexcept
{
    if (this != &other) {
        close();
        m_key = other.m_key;
        other.m_key = nullptr;
    }
    return *this;
}

void RegistryKey::close()
{
    if (m_key)
        RegCloseKey(m_key);
    m_key = nullptr;
}

LSTATUS RegistryKey::create(HKEY root, const std::wstring &path, RegistryKey &out)
{
    out.close();
    return RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &out.m_key, nullptr);
}

LSTATUS RegistryKey::open(HKEY root, const std::wstring &path, REGSAM access, RegistryKey &out)
{
    out.close();
    return RegOpenKeyExW(root, path.c_str(), 0, access, &out.m_key);
}

LSTATUS RegistryKey::removeTree(HKEY root, const std::wstring &path)
{
    const LSTATUS status = RegDeleteTreeW(root, path.c_str());
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

LSTATUS RegistryKey::setString(const wchar_t *name, const std::wstring &value) const
{
    const DWORD bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(m_key, name, 0, REG_SZ, reinterpret_cast<const BYTE *>(value.c_str()), bytes);
}

LSTATUS RegistryKey::setDword(const wchar_t *name, DWORD value) const
{
    return RegSetValueExW(m_key, name, 0, REG_DWORD, reinterpret_cast<const BYTE *>(&value), sizeof(value));
}

LSTATUS RegistryKey::setBinary(const wchar_t *name, const void *data, DWORD size) const
{
    return RegSetValueExW(m_key, name, 0, REG_BINARY, static_cast<const BYTE *>(data), size);
}

LSTATUS RegistryKey::setMultiString(const wchar_t *name, const std::vector<std::wstring> &values) const
{
    std::wstring data;
    for (const std::wstring &value : values)
        data.append(value).push_back(L'\0');
    data.push_back(L'\0');
    const DWORD bytes = static_cast<DWORD>(data.size() * sizeof(wchar_t));
    return RegSetValueExW(m_key, name, 0, REG_MULTI_SZ, reinterpret_cast<const BYTE *>(data.data()), bytes);
}

bool RegistryKey::readString(const wchar_t *name, std::wstring &value) const
{
    DWORD type = 0;
    DWORD bytes = 0;
    if (RegQueryValueExW(m_key, name, nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS || type != REG_SZ)
        return false;
    std::vector<wchar_t> buffer(bytes / sizeof(wchar_t) + 1, L'\0');
    if (RegQueryValueExW(m_key, name, nullptr, &type, reinterpret_cast<BYTE *>(buffer.data()), &bytes) != ERROR_SUCCESS)
        return false;
    value.assign(buffer.data());
    return true;
}

} // namespace lab
