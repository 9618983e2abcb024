// What the terminal shows while the library waits without saying for what (a webcam waiting
// for its frames reports only a percentage): how long the wait has lasted, in steps of a few
// seconds, and that Ctrl+C stops it, so that a long wait is visibly a wait.
#pragma once

#include <chrono>
#include <string>

namespace sorvane {
namespace diag {

class WaitNote {
public:
    static const int kStepSeconds = 5;

    WaitNote();
    // A new attempt: the wait starts over at the next report.
    void restart();
    // The note for the wait so far; empty during its first step.
    std::wstring note();

private:
    bool m_running;
    std::chrono::steady_clock::time_point m_since;
};

} // namespace diag
} // namespace sorvane
