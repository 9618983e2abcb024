// Ctrl+C (or Ctrl+Break) asks the running test to stop: the framework's stop request, which
// a channel scan checks between channels and ends with USERABORTED. A second Ctrl+C ends
// the program at once.
#pragma once

namespace sorvane {
namespace diag {

class Terminal;

class StopRequest {
public:
    // Installs the console handler; `terminal` tells the person what happens.
    static void install(Terminal& terminal);
    static void uninstall();
    static bool requested();
};

} // namespace diag
} // namespace sorvane
