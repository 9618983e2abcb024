// What the `tv` and `fm` scans share: a tuner is chosen, the channel range defaults where
// the command line set none, and the scan runs until a signal, the end of the range, or
// Ctrl+C (USERABORTED).
#pragma once

#include "Command.h"

#include <ruvo/DiagDevice.h>

namespace sorvane {
namespace diag {

class TunerScanCommand : public Command {
public:
    ruvo::TestResult run(CommandContext& context) override;

protected:
    virtual ruvo::DeviceCapability fitting() const = 0;
    // "TV tuner", "FM radio tuner".
    virtual std::wstring kind() const = 0;
    virtual void applyDefaults(CommandContext& context) const = 0;
    virtual void scan(const ruvo::DiagDevice& device, const std::wstring& title) const = 0;
    // After a scan that passed: what the command adds to the terminal and the report.
    virtual void afterPass(CommandContext& context) const { (void)context; }
};

} // namespace diag
} // namespace sorvane
