// `list`: the capture devices the library finds, as a table a person can scan, as the
// library's own records (--verbose), and with each device's identity in the --json report.
#pragma once

#include "Command.h"

#include <CaptureDevice.h>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class ListCommand : public Command {
public:
    std::wstring name() const override { return L"list"; }
    std::wstring summary() const override;
    std::wstring help() const override;
    std::vector<std::wstring> ownOptions() const override { return std::vector<std::wstring>(1, L"--verbose"); }
    bool takesDevice() const override { return false; }
    ruvo::TestResult run(CommandContext &context) override;

private:
    typedef std::vector<std::wstring> Row;

    static std::vector<Row> tableOf(const kel::Array<CaptureDevice> &devices);
    static std::wstring formatTable(const std::vector<Row> &rows);
    static std::wstring verboseRecord(const CaptureDevice &device, int index);
};

} // namespace diag
} // namespace sorvane
