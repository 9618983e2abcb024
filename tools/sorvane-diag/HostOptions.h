// What the command line asked for.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace sorvane {
namespace diag {

struct HostOptions {
    HostOptions() : help(false), interactive(false), logPriority(0), frames(5), verbose(false) {}

    std::wstring command;
    bool help;
    // The options given, by their long name ("--frames"), so a command can refuse others.
    std::vector<std::wstring> given;

    // An index from `list` or a name; empty: the first device that fits the command.
    std::wstring device;
    // --set KEY=VALUE, in the order given.
    std::vector<std::pair<std::wstring, std::wstring>> settings;
    bool interactive;
    // "-" writes the report to standard output (and what a person reads to standard error).
    std::wstring jsonPath;
    std::wstring logPath;
    // A kel::LogPriority, 0 when not given.
    int logPriority;

    unsigned frames;
    std::wstring outputFolder;
    std::wstring recordingName;
    // The digital scans' --keep-ts FILE: where the scanned transport stream goes.
    std::wstring keepTsPath;
    // `list --verbose`: the library's own records.
    bool verbose;

    bool has(const std::wstring &option) const
    {
        for (const std::wstring &name : given) {
            if (name == option)
                return true;
        }
        return false;
    }
    bool jsonToStdout() const { return jsonPath == L"-"; }
};

} // namespace diag
} // namespace sorvane
