#include "devices/HiddenLabDevices.h"

#include <windows.h>

#include "common/RegistryKey.h"
#include "devices/WrittenItems.h"

namespace lab {

namespace {

// Value "<n>" names the original of key "<n>"; value "file<n>" the original of a file.
const wchar_t kHiddenKey[] = L"Software\\Sorvane\\Lab\\Hidden";

std::wstring hiddenFolder()
{
    wchar_t windows[MAX_PATH] = {};
    GetWindowsDirectoryW(windows, MAX_PATH);
    return std::wstring(windows) + L"\\SorvaneLabHidden";
}

bool hideKey(const RegistryKey &hidden, size_t index, const std::wstring &path)
{
    RegistryKey original;
    if (RegistryKey::open(HKEY_LOCAL_MACHINE, path, KEY_READ, original) != ERROR_SUCCESS)
        return true; // nothing to hide
    const std::wstring name = std::to_wstring(index);
    RegistryKey backup;
    if (RegistryKey::create(hidden.handle(), name, backup) != ERROR_SUCCESS ||
        RegCopyTreeW(original.handle(), nullptr, backup.handle()) != ERROR_SUCCESS ||
        hidden.setString(name.c_str(), path) != ERROR_SUCCESS)
        return false;
    original = RegistryKey();
    return RegistryKey::removeTree(HKEY_LOCAL_MACHINE, path) == ERROR_SUCCESS;
}

bool hideFile(const RegistryKey &hidden, size_t index, const std::wstring &path)
{
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES)
        return true;
    const std::wstring name = L"file" + std::to_wstring(index);
    CreateDirectoryW(hiddenFolder().c_str(), nullptr);
    return hidden.setString(name.c_str(), path) == ERROR_SUCCESS &&
           MoveFileExW(path.c_str(), (hiddenFolder() + L"\\" + name).c_str(), MOVEFILE_REPLACE_EXISTING);
}

void restoreItem(const RegistryKey &hidden, const std::wstring &name, const std::wstring &original)
{
    if (name.compare(0, 4, L"file") == 0) {
        MoveFileExW((hiddenFolder() + L"\\" + name).c_str(), original.c_str(), MOVEFILE_REPLACE_EXISTING);
        return;
    }
    RegistryKey backup;
    RegistryKey target;
    if (RegistryKey::open(hidden.handle(), name, KEY_READ, backup) == ERROR_SUCCESS &&
        RegistryKey::create(HKEY_LOCAL_MACHINE, original, target) == ERROR_SUCCESS)
        RegCopyTreeW(backup.handle(), nullptr, target.handle());
}

} // namespace

bool HiddenLabDevices::hide(std::wstring &error)
{
    restore();
    const WrittenItems items = WrittenItems::readRecorded();
    RegistryKey hidden;
    if (RegistryKey::create(HKEY_LOCAL_MACHINE, kHiddenKey, hidden) != ERROR_SUCCESS) {
        error = L"cannot create " + std::wstring(kHiddenKey);
        return false;
    }
    m_hidden = true;
    for (size_t i = 0; i < items.keys.size(); ++i) {
        if (!hideKey(hidden, i, items.keys[i])) {
            error = L"cannot hide " + items.keys[i];
            return false;
        }
    }
    for (size_t i = 0; i < items.files.size(); ++i) {
        if (!hideFile(hidden, i, items.files[i])) {
            error = L"cannot hide " + items.files[i];
            return false;
        }
    }
    return true;
}

HiddenLabDevices::~HiddenLabDevices()
{
    if (m_hidden)
        restore();
}

void HiddenLabDevices::discard()
{
    WIN32_FIND_DATAW found = {};
    HANDLE search = FindFirstFileW((hiddenFolder() + L"\\file*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            DeleteFileW((hiddenFolder() + L"\\" + found.cFileName).c_str());
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    RemoveDirectoryW(hiddenFolder().c_str());
    RegistryKey::removeTree(HKEY_LOCAL_MACHINE, kHiddenKey);
}

void HiddenLabDevices::restore()
{
    RegistryKey hidden;
    if (RegistryKey::open(HKEY_LOCAL_MACHINE, kHiddenKey, KEY_READ, hidden) != ERROR_SUCCESS)
        return;
    for (DWORD index = 0;; ++index) {
        wchar_t name[64] = {};
        DWORD length = 64;
        DWORD type = 0;
        wchar_t original[1024] = {};
        DWORD bytes = sizeof(original) - sizeof(wchar_t);
        if (RegEnumValueW(hidden.handle(), index, name, &length, nullptr, &type, reinterpret_cast<BYTE *>(original),
                          &bytes) != ERROR_SUCCESS)
            break;
        if (type == REG_SZ)
            restoreItem(hidden, name, original);
    }
    hidden = RegistryKey();
    RegistryKey::removeTree(HKEY_LOCAL_MACHINE, kHiddenKey);
    RemoveDirectoryW(hiddenFolder().c_str());
}

} // namespace lab
