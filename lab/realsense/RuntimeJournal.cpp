#include "realsense/RuntimeJournal.h"

#include <windows.h>

#include <vector>

#include "common/Utf8.h"

namespace lab {
namespace realsense {

namespace {

std::wstring journalPath()
{
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetEnvironmentVariableW(L"SORVANE_LAB_REALSENSE_JOURNAL", path, MAX_PATH);
    return length > 0 && length < MAX_PATH ? std::wstring(path, length) : std::wstring();
}

} // namespace

void RuntimeJournal::record(const std::wstring &entry)
{
    const std::wstring path = journalPath();
    if (path.empty())
        return;
    HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    const std::string line = utf8(entry) + "\n";
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
}

} // namespace realsense
} // namespace lab
