#include "ScopedMonikers.h"

#include <objbase.h>

namespace sorvane {
namespace test {

namespace {

// A class ID no server is registered for: binding such a moniker fails, as for a filter whose
// driver is gone.
const wchar_t kUnregisteredClass[] = L"{5C0DE1E5-0000-4000-8000-00000000D15C}";

std::wstring guidText(const GUID &id)
{
    wchar_t text[64] = {0};
    StringFromGUID2(id, text, 64);
    return text;
}

bool setText(HKEY key, const wchar_t *name, const std::wstring &value)
{
    const DWORD bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE *>(value.c_str()), bytes) == ERROR_SUCCESS;
}

} // namespace

ScopedMonikers::ScopedMonikers(const GUID &category) : m_category(guidText(category)) {}

ScopedMonikers::~ScopedMonikers()
{
    for (const std::wstring &name : m_added)
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, instanceKey(name).c_str());
}

bool ScopedMonikers::add(const Moniker &moniker)
{
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, instanceKey(moniker.name).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return false;
    m_added.push_back(moniker.name);
    bool written = setText(key, L"FriendlyName", moniker.name);
    if (moniker.clsid != kNoClass)
        written = setText(key, L"CLSID", moniker.clsid.empty() ? kUnregisteredClass : moniker.clsid) && written;
    if (!moniker.devicePath.empty())
        written = setText(key, L"DevicePath", moniker.devicePath) && written;
    if (!moniker.description.empty())
        written = setText(key, L"Description", moniker.description) && written;
    RegCloseKey(key);
    return written;
}

std::wstring ScopedMonikers::instanceKey(const std::wstring &name) const
{
    return L"Software\\Classes\\CLSID\\" + m_category + L"\\Instance\\" + name;
}

} // namespace test
} // namespace sorvane
