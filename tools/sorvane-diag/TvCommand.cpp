#include "TvCommand.h"
#include "CaptureClasses.h"
#include "CommandContext.h"
#include "ScanRange.h"

#include <ruvo/DiagModule.h>

namespace sorvane {
namespace diag {

std::wstring TvCommand::summary() const
{
    return L"scan analog TV channels for a signal";
}

std::wstring TvCommand::help() const
{
    return L"Usage: sorvane-diag tv [--device DEVICE] [--set TVStartChannel=N --set TVEndChannel=M]\n"
           L"\n"
           L"Scans the analog TV channels of a TV tuner (the first one when no device is given),\n"
           L"on the antenna and then the cable input, showing the picture in a window. It passes on\n"
           L"the first channel with a signal; a range without one ends with NOSIGNAL, after one\n"
           L"more pass (with --interactive the library first asks you to check the cable).\n"
           L"Ctrl+C stops the scan at the next channel: USERABORTED.\n"
           L"\n"
           L"Parameters read: TVStartChannel and TVEndChannel (2 to 60, the end at or above the\n"
           L"start; the host uses 2 and 60 when unset), SignalType (ANTENNA or CABLE for one input only), "
           L"ChecksPerChannel,\n"
           L"CheckTVCable, MsgBoxTimeout (seconds to wait for an answer; 0 or unset: no limit),\n"
           L"AskCountryCode1, AskCountryCode2.\n";
}

void TvCommand::applyDefaults(CommandContext &context) const
{
    context.defaultParameter(L"TVStartChannel", L"2");
    context.defaultParameter(L"TVEndChannel", L"60");
}

void TvCommand::scan(const ruvo::DiagDevice &device, const std::wstring &title) const
{
    CaptureClasses::checkTVSignal(device, title);
}

std::wstring TvCommand::rangeProblem() const
{
    return ScanRange::channelProblem(L"TVStartChannel", L"TVEndChannel");
}

std::wstring TvCommand::scanNote() const
{
    // The library tries both inputs on every channel unless SignalType names one.
    const ruvo::Parameter *type = ruvo::DiagModule::findParameter(kel::String(L"SignalType"));
    const std::wstring only = type && type->isset() ? type->value().toKELString().toUpper().wstr() : std::wstring();
    if (only == L"ANTENNA")
        return L"Each channel is checked on the antenna input only.";
    if (only == L"CABLE")
        return L"Each channel is checked on the cable input only.";
    return L"Each channel is checked on the antenna input, then on the cable input.";
}

} // namespace diag
} // namespace sorvane
