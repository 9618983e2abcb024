#include "StopRequest.h"
#include "PromptReader.h"
#include "ResultCodes.h"
#include "Terminal.h"

#include <windows.h>

#include <atomic>
#include <mutex>

namespace sorvane {
namespace diag {

namespace {

std::atomic<bool> g_requested(false);
std::atomic<Terminal *> g_terminal(nullptr);
std::mutex g_actionLock;
StopRequest::QuitAction g_beforeQuit;

void quitAtOnce()
{
    if (Terminal *terminal = g_terminal.load()) {
        terminal->finishProgress();
        terminal->problem(L"Quit at once by a second Ctrl+C: the test did not finish.");
    }
    {
        std::lock_guard<std::mutex> hold(g_actionLock);
        if (g_beforeQuit)
            g_beforeQuit();
    }
    // At once means without the library's clean-up, which may be what hangs.
    TerminateProcess(GetCurrentProcess(), ResultCodes::FORCED_QUIT);
}

BOOL WINAPI onConsoleControl(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        return FALSE;
    if (g_requested.exchange(true)) {
        quitAtOnce();
        return TRUE;
    }
    if (Terminal *terminal = g_terminal.load())
        terminal->problem(L"Stop requested: the test ends at its next check. Press Ctrl+C again to quit at once.");
    // A question waiting for an answer is such a check: it is answered with abort.
    PromptReader::instance().interrupt();
    return TRUE;
}

} // namespace

void StopRequest::install(Terminal &terminal, const QuitAction &beforeQuit)
{
    {
        std::lock_guard<std::mutex> hold(g_actionLock);
        g_beforeQuit = beforeQuit;
    }
    g_terminal = &terminal;
    // A process started in a new process group ignores Ctrl+C until it asks for it.
    SetConsoleCtrlHandler(nullptr, FALSE);
    SetConsoleCtrlHandler(onConsoleControl, TRUE);
}

void StopRequest::uninstall()
{
    SetConsoleCtrlHandler(onConsoleControl, FALSE);
    g_terminal = nullptr;
    std::lock_guard<std::mutex> hold(g_actionLock);
    g_beforeQuit = QuitAction();
}

bool StopRequest::requested()
{
    return g_requested.load();
}

} // namespace diag
} // namespace sorvane
