// `record`: the library's capture to file, a short AVI recording whose path is printed.
#pragma once

#include "Command.h"

namespace sorvane {
namespace diag {

class RecordCommand : public Command {
public:
    static const wchar_t *const kDefaultName;

    std::wstring name() const override { return L"record"; }
    std::wstring summary() const override;
    std::wstring help() const override;
    std::vector<std::wstring> ownOptions() const override;
    ruvo::TestResult run(CommandContext &context) override;
};

} // namespace diag
} // namespace sorvane
