// `tv`: the analog TV channel scan, which passes on the first channel with a signal.
#pragma once

#include "TunerScanCommand.h"

namespace sorvane {
namespace diag {

class TvCommand : public TunerScanCommand {
public:
    std::wstring name() const override { return L"tv"; }
    std::wstring summary() const override;
    std::wstring help() const override;

protected:
    ruvo::DeviceCapability fitting() const override { return ruvo::DeviceCapability::AnalogTVTuner(); }
    std::wstring kind() const override { return L"TV tuner"; }
    void applyDefaults(CommandContext &context) const override;
    void scan(const ruvo::DiagDevice &device, const std::wstring &title) const override;
    std::wstring rangeProblem() const override;
    bool refusesWithoutTuner() const override { return true; }
    std::wstring scanNote() const override;
};

} // namespace diag
} // namespace sorvane
