#include "StandInRuntime.h"

#include <windows.h>

#include <sstream>

namespace sorvane {
namespace test {

namespace {
const wchar_t kConfigVariable[] = L"SORVANE_LAB_REALSENSE_CONFIG";
const wchar_t kJournalVariable[] = L"SORVANE_LAB_REALSENSE_JOURNAL";

void writeFile(const std::wstring &path, const std::string &text)
{
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
}
} // namespace

StandInRuntime::StandInRuntime() : m_folder(L"sorvane-realsense")
{
    describe(std::string());
    SetEnvironmentVariableW(kConfigVariable, m_folder.file(L"runtime.conf").c_str());
    SetEnvironmentVariableW(kJournalVariable, m_folder.file(L"journal.txt").c_str());
}

StandInRuntime::~StandInRuntime()
{
    SetEnvironmentVariableW(kConfigVariable, nullptr);
    SetEnvironmentVariableW(kJournalVariable, nullptr);
}

void StandInRuntime::describe(const std::string &text)
{
    writeFile(m_folder.file(L"runtime.conf"), text);
}

std::vector<std::string> StandInRuntime::journal() const
{
    std::vector<std::string> entries;
    std::istringstream lines(ScratchFolder::read(m_folder.file(L"journal.txt")));
    for (std::string line; std::getline(lines, line);)
        entries.push_back(line);
    return entries;
}

void StandInRuntime::clearJournal()
{
    DeleteFileW(m_folder.file(L"journal.txt").c_str());
}

} // namespace test
} // namespace sorvane
