// `list`: the devices the library can test, as the framework's device records.
#pragma once

#include "Command.h"

#include <ruvo/DiagDevice.h>

namespace sorvane {
namespace diag {

class ListCommand : public Command {
public:
    std::wstring name() const override { return L"list"; }
    std::wstring summary() const override;
    std::wstring help() const override;
    bool takesDevice() const override { return false; }
    ruvo::TestResult run(CommandContext& context) override;

private:
    static std::wstring describe(const ruvo::DiagDevice& device, size_t index);
};

} // namespace diag
} // namespace sorvane
