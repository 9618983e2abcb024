// `atsc`, `clearqam`, `dvbt` and `ocur`: a digital tuner's channel scan, which passes on the
// first channel with a signal and then reports the health of that channel's transport stream.
// Without --device each takes the first tuner of its own kind; `--keep-ts FILE` keeps the
// stream the scan ended on.
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
    std::vector<std::wstring> ownOptions() const override;
    ruvo::TestResult run(CommandContext &context) override;

    // True when the device's name or description says it is a tuner of `kind` (a DVB-T or
    // DTMB tuner for DVBT, an OpenCable receiver for OCUR, an ATSC tuner for ATSC, a cable
    // (QAM) tuner for CLEARQAM).
    static bool isOfKind(CaptureClasses::DigitalKind kind, const ruvo::DiagDevice &device);
    // The name says DTMB (DMB-TH): the library scans that device on the DTMB plan.
    static bool isDTMB(const ruvo::DiagDevice &device);

protected:
    ruvo::DeviceCapability fitting() const override { return ruvo::DeviceCapability::DigitalTVTuner(); }
    std::wstring kind() const override;
    bool chooseTuner(CommandContext &context, ruvo::DiagDevice &device) const override;
    void applyDefaults(CommandContext &context) const override;
    std::wstring rangeProblem() const override;
    ruvo::TestResult prepare(CommandContext &context, const ruvo::DiagDevice &device) const override;
    void scan(const ruvo::DiagDevice &device, const std::wstring &title) const override;
    std::wstring foundAt(const std::wstring &channel) const override;
    void afterPass(CommandContext &context) const override;
    void afterScan(CommandContext &context, const ruvo::TestResult &result) const override;

private:
    // Says which digital tuners there are, none of them of this kind.
    void sayNoneOfKind(CommandContext &context) const;
    void reportChannel(CommandContext &context) const;
    void keepStream(CommandContext &context, const ruvo::TestResult &result) const;
    // For a tuner whose scan keeps no stream: the channel found (else the last one tried)
    // tuned once more and kept for a few seconds, the progress shown. False, with the reason
    // said, when nothing was kept; `which` names what was.
    bool captureChannel(CommandContext &context, const std::wstring &path, CaptureClasses::StreamReport &kept,
                        std::wstring &which) const;
    void adviseCountry(CommandContext &context) const;

    CaptureClasses::DigitalKind m_kind;
    mutable CaptureClasses::StreamReport m_stream;
    mutable std::wstring m_foundChannel;
    // The device and title of the scan, for a capture after it.
    mutable ruvo::DiagDevice m_device;
    mutable std::wstring m_title;
};

} // namespace diag
} // namespace sorvane
