// The error lines the library writes to its log while a command runs, kept in memory so that
// the host can say what went wrong when the posted event alone does not (the same "frames
// not delivered" event stands for a refused start, a refused format and a silent camera).
// Also kept: the detail lines of failures the library does not raise as such (a tuner's
// failed SignalPresent call, which it counts as no signal; a capture's time-out, empty
// samples; a digital channel without transport stream or with every program scrambled).
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class LibraryErrors {
public:
    // Starts keeping the lines (installs the log's observer); stop() ends it.
    static void start();
    // Also hands every line the library writes, as written, to `listener` (none when empty).
    typedef std::function<void(const std::wstring &)> Listener;
    static void setListener(const Listener &listener);
    static void stop();
    static size_t count();
    // The lines from index `first` on, each its first line without the source line number.
    static std::vector<std::wstring> since(size_t first);
    // What the test was doing as the library wrote each line (its progress text, "Testing
    // channel 7"), in the order of since().
    static std::vector<std::wstring> activitiesSince(size_t first);
    // The test's progress text from now on.
    static void setActivity(const std::wstring &text);
};

} // namespace diag
} // namespace sorvane
