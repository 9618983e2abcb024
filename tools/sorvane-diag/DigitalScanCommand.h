// `atsc`, `clearqam`, `dvbt` and `ocur`: a digital tuner's channel scan, which passes on the
// first channel with a signal and then reports the health of that channel's transport stream.
#pragma once

#include "CaptureClasses.h"
#include "TunerScanCommand.h"

namespace sorvane {
namespace diag {

class DigitalScanCommand : public TunerScanCommand {
public:
    explicit DigitalScanCommand(CaptureClasses::DigitalKind kind);

    std::wstring name() const override;
    std::wstring summary() const override;
    std::wstring help() const override;
    ruvo::TestResult run(CommandContext &context) override;

protected:
    ruvo::DeviceCapability fitting() const override { return ruvo::DeviceCapability::DigitalTVTuner(); }
    std::wstring kind() const override;
    void applyDefaults(CommandContext &context) const override;
    void scan(const ruvo::DiagDevice &device, const std::wstring &title) const override;
    void afterPass(CommandContext &context) const override;

private:
    CaptureClasses::DigitalKind m_kind;
    mutable CaptureClasses::StreamReport m_stream;
};

} // namespace diag
} // namespace sorvane
