#include "RunningProgram.h"

namespace sorvane {
namespace test {

RunningProgram::RunningProgram(const std::wstring &path)
    : m_ready(nullptr), m_end(nullptr), m_process(), m_started(false)
{
    const std::wstring ready = eventName(L"ready");
    const std::wstring end = eventName(L"end");
    m_ready = CreateEventW(nullptr, TRUE, FALSE, ready.c_str());
    m_end = CreateEventW(nullptr, TRUE, FALSE, end.c_str());
    std::wstring commandLine = L"\"" + path + L"\" " + ready + L" " + end;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    if (CreateProcessW(path.c_str(), &commandLine[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &m_process)) {
        m_started = WaitForSingleObject(m_ready, 20000) == WAIT_OBJECT_0;
    }
}

RunningProgram::~RunningProgram()
{
    end();
    CloseHandle(m_ready);
    CloseHandle(m_end);
}

bool RunningProgram::end()
{
    if (!m_process.hProcess)
        return true;
    SetEvent(m_end);
    const bool ended = WaitForSingleObject(m_process.hProcess, 20000) == WAIT_OBJECT_0;
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
    m_process = PROCESS_INFORMATION();
    return ended;
}

std::wstring RunningProgram::eventName(const wchar_t *role)
{
    static int counter = 0;
    return L"sorvane-process-check-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++counter) +
           L"-" + role;
}

} // namespace test
} // namespace sorvane
