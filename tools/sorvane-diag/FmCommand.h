// `fm`: the FM radio sweep, which passes on the first frequency with a station.
#pragma once

#include "TunerScanCommand.h"

namespace sorvane {
namespace diag {

class FmCommand : public TunerScanCommand {
public:
    std::wstring name() const override { return L"fm"; }
    std::wstring summary() const override;
    std::wstring help() const override;

protected:
    ruvo::DeviceCapability fitting() const override { return ruvo::DeviceCapability::FMRadioTuner(); }
    std::wstring kind() const override { return L"FM radio tuner"; }
    void applyDefaults(CommandContext &context) const override;
    void scan(const ruvo::DiagDevice &device, const std::wstring &title) const override;
    std::wstring rangeProblem() const override;
    bool refusesWithoutTuner() const override { return true; }
    std::wstring foundAt(const std::wstring &channel) const override;
};

} // namespace diag
} // namespace sorvane
