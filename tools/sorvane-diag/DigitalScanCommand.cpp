#include "DigitalScanCommand.h"
#include "CommandContext.h"
#include "RunReport.h"
#include "Terminal.h"

namespace sorvane {
namespace diag {

namespace {

struct KindText {
    const wchar_t *name;
    const wchar_t *summary;
    const wchar_t *kind;
    const wchar_t *firstChannel;
    const wchar_t *lastChannel;
    const wchar_t *details;
};

const KindText kTexts[] = {
    {L"atsc", L"scan ATSC channels (8-VSB) for a signal", L"ATSC tuner", L"2", L"69",
     L"Tunes ATSC channels 2 to 69 through the \"ATSC\" tuning space at their 8-VSB carrier\n"
     L"frequencies and passes on the first channel whose device reports a signal.\n"},
    {L"clearqam", L"scan clear QAM cable channels for an unscrambled program", L"Clear QAM tuner", L"2", L"120",
     L"Tunes cable channels 2 to 120 at 256-QAM, collects half a second of each channel's\n"
     L"transport stream and passes on the first channel with a program that is not scrambled.\n"},
    {L"dvbt", L"scan DVB-T (or DTMB) channels for a signal", L"DVB-T tuner", nullptr, nullptr,
     L"Tunes the DVB-T channels of the country (the Country parameter, else the Windows location,\n"
     L"else a dialog with --interactive) or, for a DTMB device, channels 13 to 56, and passes on\n"
     L"the first channel with a good transport stream or a signal the device reports.\n"},
    {L"ocur", L"scan an OpenCable receiver's channels for a signal", L"OpenCable receiver", L"2", L"69",
     L"Tunes channels 2 to 69 through the receiver's cable tuning space; with\n"
     L"UseMinorChannelTechnique a channel counts when the tuned request keeps a minor channel.\n"},
};

const KindText &textOf(CaptureClasses::DigitalKind kind)
{
    return kTexts[static_cast<int>(kind)];
}

std::wstring healthLine(const CaptureClasses::StreamReport &stream)
{
    const StreamHealth &health = stream.health;
    std::wstring line = L"Stream: quality " + std::to_wstring(stream.quality) + L" %, " +
                        std::to_wstring(health.packets) + L" packets; TR 101 290 priority 1: ";
    if (health.clean())
        return line + L"no errors";
    line += L"sync losses " + std::to_wstring(health.syncLosses) + L", sync byte errors " +
            std::to_wstring(health.syncByteErrors) + L", PAT errors " + std::to_wstring(health.patErrors) +
            L", continuity errors " + std::to_wstring(health.continuityErrors) + L", PMT errors " +
            std::to_wstring(health.pmtErrors) + L", missing PIDs " + std::to_wstring(health.pidErrors);
    return line;
}

} // namespace

DigitalScanCommand::DigitalScanCommand(CaptureClasses::DigitalKind kind) : m_kind(kind) {}

std::wstring DigitalScanCommand::name() const
{
    return textOf(m_kind).name;
}

std::wstring DigitalScanCommand::summary() const
{
    return textOf(m_kind).summary;
}

std::wstring DigitalScanCommand::kind() const
{
    return textOf(m_kind).kind;
}

std::wstring DigitalScanCommand::help() const
{
    const KindText &text = textOf(m_kind);
    std::wstring range = text.firstChannel
                             ? std::wstring(L"DigitalStartChannel and DigitalEndChannel (the host uses ") +
                                   text.firstChannel + L" and " + text.lastChannel + L" when unset)"
                             : std::wstring(L"DigitalStartChannel and DigitalEndChannel\n(unset: every channel of the "
                                            L"country, or 13 to 56 for DTMB)");
    return L"Usage: sorvane-diag " + std::wstring(text.name) +
           L" [--device DEVICE] [--set DigitalStartChannel=N --set DigitalEndChannel=M]\n\n" + text.details +
           L"A range without a signal ends with NOSIGNAL after one more pass. Ctrl+C stops the scan\n"
           L"at the next channel: USERABORTED. On a pass the report gives the transport stream's\n"
           L"health (ETSI TR 101 290 priority 1) beside its quality percentage, where measured.\n\n"
           L"Parameters read: " +
           range + L",\nCheckTVCable, MsgBoxTimeout" +
           (m_kind == CaptureClasses::DigitalKind::DVBT ? L", Country" : L"") +
           (m_kind == CaptureClasses::DigitalKind::OCUR ? L", UseMinorChannelTechnique" : L"") + L".\n";
}

ruvo::TestResult DigitalScanCommand::run(CommandContext &context)
{
    m_stream = CaptureClasses::StreamReport();
    return TunerScanCommand::run(context);
}

void DigitalScanCommand::applyDefaults(CommandContext &context) const
{
    const KindText &text = textOf(m_kind);
    if (!text.firstChannel)
        return;
    context.defaultParameter(L"DigitalStartChannel", text.firstChannel);
    context.defaultParameter(L"DigitalEndChannel", text.lastChannel);
}

void DigitalScanCommand::scan(const ruvo::DiagDevice &device, const std::wstring &title) const
{
    m_stream = CaptureClasses::checkDigitalTVSignal(m_kind, device, title);
}

void DigitalScanCommand::afterPass(CommandContext &context) const
{
    if (!m_stream.health.measured) {
        context.terminal().line(L"Stream: not measured by this tuner (no sample grabber)");
        return;
    }
    context.report().setStreamHealth(m_stream.health, m_stream.quality);
    context.terminal().line(healthLine(m_stream));
}

} // namespace diag
} // namespace sorvane
