// `demo`: the library at work against whatever capture hardware there is (under Wine the
// lab's simulated devices): the device list, then frames from the first webcam.
#pragma once

#include "Command.h"

namespace sorvane {
namespace diag {

class DemoCommand : public Command {
public:
    DemoCommand(Command &list, Command &webcam);

    std::wstring name() const override { return L"demo"; }
    std::wstring summary() const override;
    std::wstring help() const override;
    std::vector<std::wstring> ownOptions() const override;
    ruvo::TestResult run(CommandContext &context) override;

private:
    Command &m_list;
    Command &m_webcam;
};

} // namespace diag
} // namespace sorvane
