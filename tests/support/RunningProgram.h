#pragma once

#include <windows.h>
#include <string>

namespace sorvane {
namespace test {

// One running copy of the waiting helper program; ends it and waits for it when destroyed.
class RunningProgram {
public:
    explicit RunningProgram(const std::wstring &path);
    ~RunningProgram();
    RunningProgram(const RunningProgram &) = delete;
    RunningProgram &operator=(const RunningProgram &) = delete;

    bool started() const { return m_started; }
    // Tells the program to end and waits until it has.
    bool end();

private:
    static std::wstring eventName(const wchar_t *role);

    HANDLE m_ready;
    HANDLE m_end;
    PROCESS_INFORMATION m_process;
    bool m_started;
};

} // namespace test
} // namespace sorvane
