#include "DigitalScanCommand.h"
#include "ChannelName.h"
#include "CommandContext.h"
#include "CountryParameter.h"
#include "HostPaths.h"
#include "JsonWriter.h"
#include "RunReport.h"
#include "ScanRange.h"
#include "Terminal.h"
#include "TransportStreamFile.h"
#include "DisplayCheck.h"
#include "HostError.h"
#include "StopRequest.h"

#include <CaptureException.h>

#include <cwchar>

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
    // Words of a tuner's name or description that say it is of this kind (lower case), and
    // words that say it is not.
    std::vector<const wchar_t *> words;
    std::vector<const wchar_t *> notWords;
};

const KindText kTexts[] = {
    {L"atsc",
     L"scan ATSC channels (8-VSB) for a signal",
     L"ATSC tuner",
     L"2",
     L"69",
     L"Tunes ATSC channels 2 to 69 through the \"ATSC\" tuning space at their 8-VSB carrier\n"
     L"frequencies and passes on the first channel whose device reports a signal.\n",
     {L"atsc"},
     {}},
    {L"clearqam",
     L"scan clear QAM cable channels for an unscrambled program",
     L"Clear QAM tuner",
     L"2",
     L"120",
     L"Tunes cable channels 2 to 120 at 256-QAM, collects half a second of each channel's\n"
     L"transport stream and passes on the first channel with a program that is not scrambled.\n",
     {L"qam", L"cable"},
     {L"opencable", L"ocur", L"cablecard"}},
    {L"dvbt",
     L"scan DVB-T (or DTMB) channels for a signal",
     L"DVB-T or DTMB tuner",
     nullptr,
     nullptr,
     L"Tunes the DVB-T channels of the country (the Country parameter, else a list to choose\n"
     L"from with --interactive: a dialog, or the terminal when there is no display) or, for a\n"
     L"DTMB device, channels 13 to 56, and passes on the first channel with a good transport\n"
     L"stream or a signal the device reports. Country takes a two-letter country code in any\n"
     L"case (DE, us) or UserDefined; a name (germany) or an unknown code is refused.\n",
     {L"dvb-t", L"dvbt", L"dtmb", L"dmb-th", L"dmbth"},
     {}},
    {L"ocur",
     L"scan an OpenCable receiver's channels for a signal",
     L"OpenCable receiver",
     L"2",
     L"69",
     L"Tunes channels 2 to 69 through the receiver's cable tuning space, each by its channel\n"
     L"number alone (the receiver's CableCARD channel map places it on the cable); with\n"
     L"UseMinorChannelTechnique a channel counts when the tuned request keeps a minor channel.\n",
     {L"opencable", L"ocur", L"cablecard"},
     {}},
};

const KindText &textOf(CaptureClasses::DigitalKind kind)
{
    return kTexts[static_cast<int>(kind)];
}

bool mentions(const std::wstring &text, const std::vector<const wchar_t *> &words)
{
    for (const wchar_t *word : words) {
        if (text.find(word) != std::wstring::npos)
            return true;
    }
    return false;
}

std::wstring seconds(double milliseconds)
{
    wchar_t text[32];
    swprintf(text, 32, L"%.1f s", milliseconds / 1000.0);
    return text;
}

std::wstring healthLine(const CaptureClasses::StreamReport &stream)
{
    const StreamHealth &health = stream.health;
    std::wstring line = L"Stream: quality " + std::to_wstring(stream.quality) + L" %, " +
                        std::to_wstring(health.packets) + L" packets over " + seconds(health.durationMs) +
                        L" on screen; TR 101 290 priority 1: ";
    if (health.clean())
        return line + L"no errors";
    line += L"sync losses " + std::to_wstring(health.syncLosses) + L", sync byte errors " +
            std::to_wstring(health.syncByteErrors) + L", PAT errors " + std::to_wstring(health.patErrors) +
            (health.patMissing ? L" (no PAT at all)" : L"") + L", continuity errors " +
            std::to_wstring(health.continuityErrors) + L", PMT errors " + std::to_wstring(health.pmtErrors) +
            L", missing PIDs " + std::to_wstring(health.pidErrors);
    return line;
}

// How long a channel is kept when the scan's graph kept none of its stream.
const double kKeptSeconds = 5.0;

// Shorter than one table interval, a look at the stream cannot judge the tables' repetition.
bool tooShortToJudge(const StreamHealth &health)
{
    return health.durationMs < 2.0 * StreamHealth::kTableIntervalMs;
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

std::vector<std::wstring> DigitalScanCommand::ownOptions() const
{
    return std::vector<std::wstring>(1, L"--keep-ts");
}

bool DigitalScanCommand::isOfKind(CaptureClasses::DigitalKind kind, const ruvo::DiagDevice &device)
{
    if (!device.deviceCapabilities().isCapable(ruvo::DeviceCapability::DigitalTVTuner()))
        return false;
    const std::wstring text = (device.name() + kel::String(L" ") + device.description()).toLower().wstr();
    const KindText &kindText = textOf(kind);
    return mentions(text, kindText.words) && !mentions(text, kindText.notWords);
}

std::wstring DigitalScanCommand::help() const
{
    const KindText &text = textOf(m_kind);
    std::wstring range = text.firstChannel
                             ? std::wstring(L"DigitalStartChannel and DigitalEndChannel (the host uses ") +
                                   text.firstChannel + L" and " + text.lastChannel +
                                   L" when unset; the end at or above the start)"
                             : std::wstring(L"DigitalStartChannel and DigitalEndChannel\n(unset: every channel of the "
                                            L"country, or 13 to 56 for DTMB; the end at or above the start)");
    return L"Usage: sorvane-diag " + std::wstring(text.name) +
           L" [--device DEVICE] [--set DigitalStartChannel=N --set DigitalEndChannel=M] [--keep-ts FILE]\n\n" +
           text.details + L"Without --device the scan takes the first digital tuner whose name says it is an " +
           text.kind +
           L".\n"
           L"A range without a signal ends with NOSIGNAL after one more pass. Ctrl+C stops the scan\n"
           L"at the next channel: USERABORTED. On a pass the host names the channel found by its\n"
           L"physical channel and frequency, and gives the transport stream's health (ETSI TR 101 290\n"
           L"priority 1, measured over the time the channel stayed on screen) beside its quality\n"
           L"percentage, where measured (not by the ATSC and OpenCable tuners, which have no sample\n"
           L"grabber).\n\n"
           L"      --keep-ts FILE      write the transport stream the scan ended on (the channel found,\n"
           L"                          else the last channel tried) to FILE, a .ts file players and\n"
           L"                          analysers open; the report names it" +
           (CaptureClasses::scanKeepsStream(m_kind)
                ? std::wstring(L"\n")
                : std::wstring(L". The scan's graph has no sample\n"
                               L"                          grabber, so the host tunes that channel again after\n"
                               L"                          the scan and keeps " +
                               std::to_wstring(static_cast<int>(kKeptSeconds)) +
                               L" s of it (Ctrl+C ends it early)\n")) +
           L"\n"
           L"Parameters read: " +
           range + L",\nCheckTVCable, MsgBoxTimeout" +
           (m_kind == CaptureClasses::DigitalKind::DVBT ? L", Country" : L"") +
           (m_kind == CaptureClasses::DigitalKind::OCUR ? L", UseMinorChannelTechnique" : L"") + L".\n";
}

ruvo::TestResult DigitalScanCommand::run(CommandContext &context)
{
    m_stream = CaptureClasses::StreamReport();
    m_foundChannel.clear();
    return TunerScanCommand::run(context);
}

bool DigitalScanCommand::chooseTuner(CommandContext &context, ruvo::DiagDevice &device) const
{
    if (!context.options().device.empty())
        return context.chooseDevice(fitting(), kind(), device);
    const CaptureClasses::DigitalKind wanted = m_kind;
    // DVB-T itself before its Chinese variant: a person asking for `dvbt` means DVB-T first.
    bool dvbtAlone = false;
    for (const ruvo::DiagDevice &candidate : context.devices())
        dvbtAlone = dvbtAlone || (isOfKind(wanted, candidate) && !isDTMB(candidate));
    const auto fits = [wanted, dvbtAlone](const ruvo::DiagDevice &candidate) {
        return isOfKind(wanted, candidate) && !(dvbtAlone && isDTMB(candidate));
    };
    if (context.chooseDevice(fits, kind(), L" by its name", device))
        return true;
    sayNoneOfKind(context);
    return false;
}

bool DigitalScanCommand::isDTMB(const ruvo::DiagDevice &device)
{
    return mentions(device.name().toLower().wstr(), {L"dtmb", L"dmb-th", L"dmbth"});
}

void DigitalScanCommand::sayNoneOfKind(CommandContext &context) const
{
    std::wstring others;
    for (const ruvo::DiagDevice &device : context.devices()) {
        if (device.deviceCapabilities().isCapable(fitting()))
            others += (others.empty() ? L"" : L", ") + device.name().wstr();
    }
    if (others.empty()) {
        context.say(L"The system has no digital TV tuner at all.");
        return;
    }
    // "an ATSC tuner", "a Clear QAM tuner".
    const std::wstring article = std::wstring(L"AEIOU").find(kind()[0]) == std::wstring::npos ? L"a " : L"an ";
    context.say(L"No digital tuner's name says it is " + article + kind() + L" (the digital tuners are: " + others +
                L"). If one of them is, name it with --device.");
}

void DigitalScanCommand::applyDefaults(CommandContext &context) const
{
    const KindText &text = textOf(m_kind);
    if (!text.firstChannel)
        return;
    context.defaultParameter(L"DigitalStartChannel", text.firstChannel);
    context.defaultParameter(L"DigitalEndChannel", text.lastChannel);
}

std::wstring DigitalScanCommand::rangeProblem() const
{
    return ScanRange::channelProblem(L"DigitalStartChannel", L"DigitalEndChannel");
}

ruvo::TestResult DigitalScanCommand::prepare(CommandContext &context, const ruvo::DiagDevice &device) const
{
    if (m_kind != CaptureClasses::DigitalKind::DVBT)
        return ruvo::TestResult::PASS();
    const std::wstring problem = CountryParameter::problem();
    if (!problem.empty()) {
        context.say(problem);
        return ruvo::TestResult::BADPARAMS();
    }
    // A DTMB tuner has its own channels; the library asks for no country then.
    if (isDTMB(device) || !CountryParameter::leftToLibrary() || !context.options().interactive ||
        DisplayCheck::canShowWindows())
        return ruvo::TestResult::PASS();
    return CountryParameter::askAtTerminal(context);
}

void DigitalScanCommand::scan(const ruvo::DiagDevice &device, const std::wstring &title) const
{
    m_device = device;
    m_title = title;
    CaptureClasses::checkDigitalTVSignal(m_kind, device, title, m_stream);
}

std::wstring DigitalScanCommand::foundAt(const std::wstring &channel) const
{
    m_foundChannel = channel;
    const ChannelName::Place place = ChannelName::of(m_kind, _wtoi(channel.c_str()), m_stream);
    const std::wstring list =
        m_kind == CaptureClasses::DigitalKind::DVBT && !m_stream.isDTMB ? L" of the country's list" : std::wstring();
    return L"Signal found on channel " + channel + list + L": " + place.text + L".";
}

void DigitalScanCommand::afterPass(CommandContext &context) const
{
    reportChannel(context);
    if (!m_stream.health.measured) {
        context.terminal().line(L"Stream: not measured by this tuner (no sample grabber)");
        return;
    }
    context.report().setStreamHealth(m_stream.health, m_stream.quality);
    context.terminal().line(healthLine(m_stream));
    if (tooShortToJudge(m_stream.health))
        context.terminal().line(L"The stream was seen for less than a second: too short to judge how often its "
                                L"tables repeat.");
}

void DigitalScanCommand::reportChannel(CommandContext &context) const
{
    if (m_foundChannel.empty())
        return;
    const ChannelName::Place place = ChannelName::of(m_kind, _wtoi(m_foundChannel.c_str()), m_stream);
    const std::wstring scanned = m_foundChannel;
    context.report().addSection(L"channelFound", [scanned, place](JsonWriter &json) {
        json.beginObject();
        json.field(L"scanned", scanned);
        json.field(L"physical", place.physical);
        json.field(L"frequencyKHz", static_cast<int64_t>(place.frequencyKHz));
        json.field(L"text", place.text);
        json.endObject();
    });
}

void DigitalScanCommand::afterScan(CommandContext &context, const ruvo::TestResult &result) const
{
    if (result == ruvo::TestResult::MISCONFIGURED())
        adviseCountry(context);
    if (!context.options().keepTsPath.empty())
        keepStream(context, result);
}

void DigitalScanCommand::adviseCountry(CommandContext &context) const
{
    for (const ruvo::PostedEvent &event : context.report().eventsSince(0)) {
        if (event.key == kel::String(L"SetCountryName")) {
            context.say(L"What happened: a DVB-T scan tunes the channels of a country, and no country was given "
                        L"(without --interactive nobody is asked). " +
                        CountryParameter::howToChoose());
            return;
        }
    }
}

void DigitalScanCommand::keepStream(CommandContext &context, const ruvo::TestResult &result) const
{
    const std::wstring path = HostPaths::absolute(context.options().keepTsPath);
    CaptureClasses::StreamReport captured;
    std::wstring which = m_stream.fromFoundChannel
                             ? L"the channel found"
                             : (result == ruvo::TestResult::PASS() ? L"the scan" : L"the last channel tried");
    const bool keptByScan = CaptureClasses::scanKeepsStream(m_kind);
    if (!keptByScan && !captureChannel(context, path, captured, which))
        return;
    const CaptureClasses::StreamReport &stream = keptByScan ? m_stream : captured;
    if (stream.bytes.empty()) {
        context.say(L"No transport stream to keep in " + path + L": none arrived from the tuner.");
        return;
    }
    const size_t packets = TransportStreamFile::write(path, stream.bytes);
    context.report().addFile(path, L"transportStream");
    context.terminal().line(L"Kept " + std::to_wstring(packets) + L" packets of " + which + L" in " +
                            HostPaths::shown(path));
}

bool DigitalScanCommand::captureChannel(CommandContext &context, const std::wstring &path,
                                        CaptureClasses::StreamReport &kept, std::wstring &which) const
{
    const std::wstring channel = m_foundChannel.empty() ? lastChannel(context) : m_foundChannel;
    if (channel.empty() || StopRequest::requested()) {
        context.say(L"No transport stream to keep in " + path +
                    (channel.empty() ? L": the scan tuned no channel." : L": the scan was stopped."));
        return false;
    }
    context.terminal().line(L"The " + kind() + L"'s scan graph has no sample grabber: channel " + channel +
                            L" is tuned once more to keep its stream (" + seconds(kKeptSeconds * 1000.0) +
                            L"; Ctrl+C ends it).");
    // The text changes once a second, so that a terminal without a console gets a line a second.
    const auto watch = [&context, &channel](double done) {
        context.terminal().progress(static_cast<int>(done * 100.0 / kKeptSeconds),
                                    L"Keeping channel " + channel + L"'s transport stream: " +
                                        std::to_wstring(static_cast<int>(done)) + L" of " +
                                        std::to_wstring(static_cast<int>(kKeptSeconds)) + L" s");
        return !StopRequest::requested();
    };
    HRESULT hr = S_OK;
    try {
        hr = CaptureClasses::captureChannelStream(m_kind, m_device, m_title, _wtoi(channel.c_str()), kKeptSeconds,
                                                  watch, kept);
    } catch (const CaptureException &failure) {
        hr = failure.getErrorCode() ? static_cast<HRESULT>(failure.getErrorCode()) : E_FAIL;
    }
    context.terminal().finishProgress();
    if (FAILED(hr)) {
        context.say(L"No transport stream to keep in " + path + L": the graph for channel " + channel +
                    L" could not be built or started again (" + HostError::describe(hr) + L").");
        return false;
    }
    which = L"channel " + channel + (m_foundChannel.empty() ? L" (the last channel tried" : L" (the channel found") +
            L", tuned again after the scan for " + seconds(kept.durationMs) +
            (StopRequest::requested() ? L": Ctrl+C ended it)" : L")");
    return true;
}

} // namespace diag
} // namespace sorvane
