// `preview`: the device's live video in a window, the library's capture to screen.
#pragma once

#include "Command.h"

namespace sorvane {
namespace diag {

class PreviewCommand : public Command {
public:
    std::wstring name() const override { return L"preview"; }
    std::wstring summary() const override;
    std::wstring help() const override;
    std::vector<std::wstring> ownOptions() const override;
    ruvo::TestResult run(CommandContext &context) override;

private:
    // Whether the library will ask in a message box if the preview passed ("Interactive").
    static bool asksInABox();
};

} // namespace diag
} // namespace sorvane
