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
    ruvo::TestResult run(CommandContext &context) override;

protected:
    virtual ruvo::DeviceCapability fitting() const = 0;
    // The tuner to scan with: --device, else the first with fitting(). False, with the reason
    // said, when there is none.
    virtual bool chooseTuner(CommandContext &context, ruvo::DiagDevice &device) const;
    // What must be settled before the library runs (a country ...): PASS to scan, otherwise
    // the result to end with, the reason said.
    virtual ruvo::TestResult prepare(CommandContext &context, const ruvo::DiagDevice &device) const
    {
        (void)context;
        (void)device;
        return ruvo::TestResult::PASS();
    }
    // "TV tuner", "FM radio tuner".
    virtual std::wstring kind() const = 0;
    virtual void applyDefaults(CommandContext &context) const = 0;
    virtual void scan(const ruvo::DiagDevice &device, const std::wstring &title) const = 0;
    // True when the host refuses a device without the tuner before the library runs (the
    // library's warning for a missing FM tuner speaks of analog TV); false leaves it to the
    // library's own result and event.
    virtual bool refusesWithoutTuner() const { return false; }
    // Why the range set for the scan cannot work (BADPARAMS before the library runs); empty
    // when it can.
    virtual std::wstring rangeProblem() const { return std::wstring(); }
    // What the person should know about the scan before it starts (which inputs); empty for
    // nothing.
    virtual std::wstring scanNote() const { return std::wstring(); }
    // Where the signal was found, from the last channel the scan reported ("3", "88.1").
    virtual std::wstring foundAt(const std::wstring &channel) const
    {
        return L"Signal found on channel " + channel + L".";
    }
    // After a scan that passed: what the command adds to the terminal and the report.
    virtual void afterPass(CommandContext &context) const { (void)context; }
    // After every scan that ran, whatever its result (after afterPass on a pass).
    virtual void afterScan(CommandContext &context, const ruvo::TestResult &result) const
    {
        (void)context;
        (void)result;
    }

    // The channel the scan reported last ("3", "88.1"), from its progress; empty when none.
    static std::wstring lastChannel(CommandContext &context);

private:
    static void reportFound(CommandContext &context, const std::wstring &sentence, const std::wstring &channel);
};

} // namespace diag
} // namespace sorvane
