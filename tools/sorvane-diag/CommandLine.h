// Turns the program's arguments into HostOptions. Throws UsageError with a sentence that
// names the offending argument.
#pragma once

#include "HostOptions.h"

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class CommandLine {
public:
    // The largest --frames a capture may ask for: enough for any sheet, and still a
    // bounded amount of memory for full-HD raw frames.
    static const unsigned kMaxFrames = 500;

    // `arguments` without the program name.
    static HostOptions parse(const std::vector<std::wstring> &arguments);
    // This process's arguments, without the program name.
    static std::vector<std::wstring> processArguments();
    // The options every command takes, as printed by --help.
    static std::wstring commonOptionsHelp();
};

} // namespace diag
} // namespace sorvane
