#include "ScratchFolder.h"

#include <windows.h>

namespace sorvane {
namespace test {

ScratchFolder::ScratchFolder(const std::wstring &name)
{
    wchar_t temp[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, temp);
    m_path = std::wstring(temp, length) + name + L"-" + std::to_wstring(GetCurrentProcessId());
    removeAll();
    CreateDirectoryW(m_path.c_str(), nullptr);
}

ScratchFolder::~ScratchFolder()
{
    removeAll();
}

void ScratchFolder::removeAll()
{
    removeTree(m_path);
}

// Subfolders too: a program under test writes folders of its own here (`--out`), and a
// later test of the same process must find the scratch folder empty.
void ScratchFolder::removeTree(const std::wstring &folder)
{
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring name = found.cFileName;
            if (name == L"." || name == L"..")
                continue;
            const std::wstring path = folder + L"\\" + name;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                removeTree(path);
            else
                DeleteFileW(path.c_str());
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    RemoveDirectoryW(folder.c_str());
}

std::string ScratchFolder::read(const std::wstring &path)
{
    std::string bytes;
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return bytes;
    char buffer[65536];
    DWORD read = 0;
    while (ReadFile(file, buffer, sizeof buffer, &read, nullptr) && read > 0)
        bytes.append(buffer, read);
    CloseHandle(file);
    return bytes;
}

} // namespace test
} // namespace sorvane
