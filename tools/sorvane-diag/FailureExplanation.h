// What the host says beside the library's events when a test did not pass: what happened,
// in words that match the result and the event, from the events and their variables, the
// Windows code and the library's error lines. Empty when the events already say it all.
#pragma once

#include <ruvo/DiagBackend.h>
#include <ruvo/TestResult.h>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class FailureExplanation {
public:
    struct Facts {
        ruvo::TestResult result;
        std::vector<ruvo::PostedEvent> events;
        long errorCode;
        // The library's error lines, and the detail lines of failures it does not raise
        // (LibraryErrors), each its first line without the source line number.
        std::vector<std::wstring> libraryErrors;
        // What the test did: "capture", "preview", "recording" or "scan".
        std::wstring phase;
        // How long the device took to stop, when that was long enough to tell (a driver that
        // hangs in Stop); 0 otherwise.
        long stoppingSeconds = 0;
        // What the test was doing as each library line was written ("Testing channel 7"), in
        // the order of libraryErrors; may be empty.
        std::vector<std::wstring> activities;
    };

    static std::wstring of(const Facts &facts);
    // "Stopping the device then took 120 s: its driver hangs when the capture stops."
    static std::wstring slowStop(long seconds);

private:
    static std::wstring ofResult(const Facts &facts);
    static bool posted(const Facts &facts, const char *key);
    // The first library error line containing `part`; empty when none does.
    static std::wstring errorLine(const Facts &facts, const wchar_t *part);
    static std::wstring framesNotDelivered(const Facts &facts);
    static std::wstring timedOut(const Facts &facts, const std::wstring &timeout);
    // "the 2 frames asked for", from the library's shortfall line.
    static std::wstring framesAskedFor(const Facts &facts);
    static std::wstring scanFailed(const Facts &facts);
    static std::wstring signalCheckFailed(const Facts &facts);
    static std::wstring statisticsUnread(const Facts &facts);
    // Digital channels the library counted as silent for a reason it saw: a refused tune, a
    // stream with every program scrambled, no stream at all.
    static std::wstring digitalChannelFaults(const Facts &facts);
    // "channel 7: the tuner refused the tune (...)" for one library line; empty for others.
    static std::wstring channelFault(const std::wstring &line);
    static std::wstring refusedTune(const std::wstring &line);
    // "once", "3 times".
    static std::wstring times(size_t count);
    static std::wstring codeText(long code);
};

} // namespace diag
} // namespace sorvane
