#include "StopRequest.h"
#include "Terminal.h"

#include <windows.h>

#include <atomic>

namespace sorvane {
namespace diag {

namespace {

std::atomic<bool> g_requested(false);
std::atomic<Terminal*> g_terminal(nullptr);

BOOL WINAPI onConsoleControl(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
    // The second request falls through to the default handler, which ends the process.
    if (g_requested.exchange(true)) return FALSE;
    if (Terminal* terminal = g_terminal.load())
        terminal->problem(L"Stop requested: the test ends at its next check. Press Ctrl+C again to quit at once.");
    return TRUE;
}

} // namespace

void StopRequest::install(Terminal& terminal)
{
    g_terminal = &terminal;
    // A process started in a new process group ignores Ctrl+C until it asks for it.
    SetConsoleCtrlHandler(nullptr, FALSE);
    SetConsoleCtrlHandler(onConsoleControl, TRUE);
}

void StopRequest::uninstall()
{
    SetConsoleCtrlHandler(onConsoleControl, FALSE);
    g_terminal = nullptr;
}

bool StopRequest::requested() { return g_requested.load(); }

} // namespace diag
} // namespace sorvane
