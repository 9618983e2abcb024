#include "ProgramCopies.h"

#include <windows.h>

namespace sorvane {
namespace test {

std::wstring binFolder()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.find_last_of(L"\\/") + 1);
}

ProgramCopies::ProgramCopies()
{
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    m_folder = std::wstring(temp) + L"sorvane-process-check-" + std::to_wstring(GetCurrentProcessId()) + L"\\";
    CreateDirectoryW(m_folder.c_str(), nullptr);
}

ProgramCopies::~ProgramCopies()
{
    for (const std::wstring &copy : m_copies)
        DeleteFileW(copy.c_str());
    RemoveDirectoryW(m_folder.c_str());
}

std::wstring ProgramCopies::copyAs(const wchar_t *name)
{
    const std::wstring target = m_folder + name;
    if (!CopyFileW((binFolder() + L"waitforend.exe").c_str(), target.c_str(), FALSE))
        return std::wstring();
    m_copies.push_back(target);
    return target;
}

} // namespace test
} // namespace sorvane
