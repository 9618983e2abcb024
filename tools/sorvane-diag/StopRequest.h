// Ctrl+C (or Ctrl+Break) asks the running test to stop: the framework's stop request, which
// a channel scan checks between channels, a preview or a recording on every turn of its
// loop, all ending with USERABORTED. A second Ctrl+C quits at once with its own exit status,
// after the action given at installation (the report of what is known so far).
#pragma once

#include <functional>

namespace sorvane {
namespace diag {

class Terminal;

class StopRequest {
public:
    typedef std::function<void()> QuitAction;

    // Installs the console handler; `terminal` tells the person what happens, `beforeQuit`
    // runs on the console's thread just before a second Ctrl+C ends the process.
    static void install(Terminal &terminal, const QuitAction &beforeQuit);
    static void uninstall();
    static bool requested();
};

} // namespace diag
} // namespace sorvane
