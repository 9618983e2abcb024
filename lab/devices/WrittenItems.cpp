#include "devices/WrittenItems.h"

#include <windows.h>

#include "common/RegistryKey.h"

namespace lab {

namespace {

// The registry keys the setup wrote are the value names of the first key, its files those of
// the second (the values' data only labels them for a reader).
const wchar_t kRecordedKeys[] = L"Software\\Sorvane\\Lab\\Devices";
const wchar_t kRecordedFiles[] = L"Software\\Sorvane\\Lab\\Files";

std::vector<std::wstring> valueNames(const wchar_t *path)
{
    std::vector<std::wstring> names;
    RegistryKey key;
    if (RegistryKey::open(HKEY_LOCAL_MACHINE, path, KEY_READ, key) != ERROR_SUCCESS)
        return names;
    for (DWORD index = 0;; ++index) {
        wchar_t name[1024] = {};
        DWORD length = 1024;
        if (RegEnumValueW(key.handle(), index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        names.emplace_back(name, length);
    }
    return names;
}

bool recordNames(const wchar_t *path, const std::vector<std::wstring> &names, const std::wstring &label)
{
    if (names.empty())
        return true;
    RegistryKey key;
    if (RegistryKey::create(HKEY_LOCAL_MACHINE, path, key) != ERROR_SUCCESS)
        return false;
    for (const std::wstring &name : names) {
        if (key.setString(name.c_str(), label) != ERROR_SUCCESS)
            return false;
    }
    return true;
}

// An instance key's parent (Enum\USB\VID_046D&PID_0825&MI_00) holds only instance keys: it
// goes with its last instance, as on a system that forgot the hardware.
void removeEmptyDeviceKey(const std::wstring &instanceKey)
{
    const std::wstring enumRoot = L"System\\CurrentControlSet\\Enum\\";
    if (_wcsnicmp(instanceKey.c_str(), enumRoot.c_str(), enumRoot.size()) != 0)
        return;
    const std::wstring deviceKey = instanceKey.substr(0, instanceKey.find_last_of(L'\\'));
    RegistryKey device;
    DWORD subkeys = 0;
    if (RegistryKey::open(HKEY_LOCAL_MACHINE, deviceKey, KEY_READ, device) != ERROR_SUCCESS ||
        RegQueryInfoKeyW(device.handle(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, nullptr, nullptr,
                         nullptr, nullptr, nullptr) != ERROR_SUCCESS ||
        subkeys != 0)
        return;
    device = RegistryKey();
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, deviceKey.c_str());
}

} // namespace

void WrittenItems::append(const WrittenItems &other)
{
    keys.insert(keys.end(), other.keys.begin(), other.keys.end());
    files.insert(files.end(), other.files.begin(), other.files.end());
}

void WrittenItems::removeAll() const
{
    for (const std::wstring &key : keys) {
        RegistryKey::removeTree(HKEY_LOCAL_MACHINE, key);
        removeEmptyDeviceKey(key);
    }
    for (const std::wstring &file : files)
        DeleteFileW(file.c_str());
}

WrittenItems WrittenItems::readRecorded()
{
    WrittenItems items;
    items.keys = valueNames(kRecordedKeys);
    items.files = valueNames(kRecordedFiles);
    return items;
}

bool WrittenItems::record(const std::wstring &label) const
{
    return recordNames(kRecordedKeys, keys, label) && recordNames(kRecordedFiles, files, label);
}

void WrittenItems::forgetRecorded()
{
    RegistryKey::removeTree(HKEY_LOCAL_MACHINE, kRecordedKeys);
    RegistryKey::removeTree(HKEY_LOCAL_MACHINE, kRecordedFiles);
}

} // namespace lab
