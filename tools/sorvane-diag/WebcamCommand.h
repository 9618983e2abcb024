// `webcam`: captures frames from a webcam and saves them as image files with a contact sheet.
#pragma once

#include "Command.h"

namespace sorvane {
namespace diag {

struct CapturedFrames;

class WebcamCommand : public Command {
public:
    std::wstring name() const override { return L"webcam"; }
    std::wstring summary() const override;
    std::wstring help() const override;
    std::vector<std::wstring> ownOptions() const override;
    ruvo::TestResult run(CommandContext &context) override;

private:
    static void save(CommandContext &context, const CapturedFrames &frames);
};

} // namespace diag
} // namespace sorvane
