#include "TunerScanCommand.h"
#include "CommandContext.h"
#include "JsonWriter.h"
#include "RunReport.h"
#include "Terminal.h"

namespace sorvane {
namespace diag {

ruvo::TestResult TunerScanCommand::run(CommandContext &context)
{
    ruvo::DiagDevice device;
    if (!chooseTuner(context, device))
        return ruvo::TestResult::NODEVICE();
    if (refusesWithoutTuner() && !device.deviceCapabilities().isCapable(fitting())) {
        // The library would answer with its analog TV warning even for a missing FM tuner.
        context.say(device.name().wstr() + L" has no " + kind() + L", so the " + name() +
                    L" scan cannot run on it (`sorvane-diag list` shows each device's capabilities).");
        return ruvo::TestResult::NOTSUPPORTED();
    }
    applyDefaults(context);
    const std::wstring problem = rangeProblem();
    if (!problem.empty()) {
        context.say(problem);
        return ruvo::TestResult::BADPARAMS();
    }
    const ruvo::TestResult ready = prepare(context, device);
    if (ready != ruvo::TestResult::PASS())
        return ready;
    context.terminal().line(L"Scanning... (Ctrl+C stops the scan)");
    const std::wstring note = scanNote();
    if (!note.empty())
        context.terminal().line(note);
    const ruvo::TestResult result =
        context.runTest(L"scan", [&] { scan(device, CommandContext::windowTitle(device)); });
    if (result == ruvo::TestResult::PASS()) {
        const std::wstring channel = lastChannel(context);
        if (!channel.empty())
            reportFound(context, foundAt(channel), channel);
        afterPass(context);
    }
    afterScan(context, result);
    return result;
}

bool TunerScanCommand::chooseTuner(CommandContext &context, ruvo::DiagDevice &device) const
{
    return context.chooseDevice(fitting(), kind(), device);
}

std::wstring TunerScanCommand::lastChannel(CommandContext &context)
{
    const std::wstring last = context.report().lastProgressText();
    return last.empty() ? last : last.substr(last.find_last_of(L' ') + 1);
}

void TunerScanCommand::reportFound(CommandContext &context, const std::wstring &sentence, const std::wstring &channel)
{
    context.terminal().line(sentence);
    context.report().addSection(L"signalFound", [sentence, channel](JsonWriter &json) {
        json.beginObject();
        json.field(L"channel", channel);
        json.field(L"text", sentence);
        json.endObject();
    });
}

} // namespace diag
} // namespace sorvane
