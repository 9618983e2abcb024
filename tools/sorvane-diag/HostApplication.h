// The program: reads the command line, runs one command with the framework played for a
// terminal, prints the result in words, writes the report and returns the exit status.
#pragma once

#include "HostOptions.h"

#include <ruvo/TestResult.h>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class Command;
class RunReport;
class Terminal;

class HostApplication {
public:
    int run(const std::vector<std::wstring> &arguments);

private:
    static int usageFailure(const std::wstring &message, int exitCode);
    static void checkOptions(const Command &command, const HostOptions &options);
    static int runCommand(Command &command, const HostOptions &options);
    static ruvo::TestResult runInSession(Command &command, const HostOptions &options, Terminal &terminal,
                                         RunReport &report);
    static void configureLog(const HostOptions &options);
    // False (with the reason printed) when the report cannot be written.
    static bool writeReport(const HostOptions &options, Terminal &terminal, const RunReport &report);
};

} // namespace diag
} // namespace sorvane
