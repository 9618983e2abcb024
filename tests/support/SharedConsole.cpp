#include "SharedConsole.h"

namespace sorvane {
namespace test {

SharedConsole::SharedConsole()
{
    // Started from a shell, the test may already sit on a console Wine made for it, and
    // AllocConsole refuses while it does.
    FreeConsole();
    m_ready = AllocConsole() != FALSE;
}

SharedConsole::~SharedConsole()
{
    SetConsoleCtrlHandler(nullptr, FALSE);
    FreeConsole();
}

bool SharedConsole::pressCtrlC(DWORD processGroup)
{
    return SetConsoleCtrlHandler(nullptr, TRUE) && GenerateConsoleCtrlEvent(CTRL_C_EVENT, processGroup);
}

} // namespace test
} // namespace sorvane
