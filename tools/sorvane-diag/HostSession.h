// The framework's side of one run, set up for the length of a scope: COM for this thread,
// the terminal backend installed, the library registered, Ctrl+C turned into stop requests,
// a device's slow stop shown on the bar.
#pragma once

#include "DeviceStopWait.h"
#include "StopRequest.h"
#include "TerminalBackend.h"

namespace sorvane {
namespace diag {

class HostSession {
public:
    // Throws HostError when COM does not start.
    // `beforeQuit` runs when a second Ctrl+C ends the program at once.
    HostSession(Terminal &terminal, RunReport &report, bool interactive, const StopRequest::QuitAction &beforeQuit);
    ~HostSession();
    HostSession(const HostSession &) = delete;
    HostSession &operator=(const HostSession &) = delete;

private:
    TerminalBackend m_backend;
    DeviceStopWait m_stopWait;
};

} // namespace diag
} // namespace sorvane
