// A console of the test's own, inherited by the programs it starts, so that Ctrl+C can be
// pressed on it. The programs start in process groups of their own (HostProgram), and Ctrl+C
// is sent to one group; this process ignores it all the same.
#pragma once

#include <windows.h>

namespace sorvane {
namespace test {

class SharedConsole {
public:
    SharedConsole();
    ~SharedConsole();
    SharedConsole(const SharedConsole &) = delete;
    SharedConsole &operator=(const SharedConsole &) = delete;

    bool ready() const { return m_ready; }
    // Call after the program has started: it would inherit the ignoring.
    bool pressCtrlC(DWORD processGroup);

private:
    bool m_ready = false;
};

} // namespace test
} // namespace sorvane
