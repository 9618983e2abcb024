// One thing the host can do: `list`, `webcam`, `tv` ... Each command is a small class.
#pragma once

#include <ruvo/TestResult.h>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class CommandContext;

class Command {
public:
    virtual ~Command() {}

    virtual std::wstring name() const = 0;
    // One line for the list of commands.
    virtual std::wstring summary() const = 0;
    // The command's --help: usage, what it does, its own options and the parameters it reads.
    virtual std::wstring help() const = 0;
    // Options beyond the common ones ("--frames"), by their long name.
    virtual std::vector<std::wstring> ownOptions() const { return std::vector<std::wstring>(); }
    virtual bool takesDevice() const { return true; }

    virtual ruvo::TestResult run(CommandContext &context) = 0;
};

} // namespace diag
} // namespace sorvane
