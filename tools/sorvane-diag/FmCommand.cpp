#include "FmCommand.h"
#include "CaptureClasses.h"
#include "CommandContext.h"
#include "ScanRange.h"

namespace sorvane {
namespace diag {

std::wstring FmCommand::summary() const
{
    return L"sweep the FM band for a radio station";
}

std::wstring FmCommand::help() const
{
    return L"Usage: sorvane-diag fm [--device DEVICE] [--set FMRadioStartChannel=MHZ --set FMRadioEndChannel=MHZ]\n"
           L"\n"
           L"Sweeps the FM band of a tuner with FM radio (the first one when no device is given)\n"
           L"in steps of 0.2 MHz. It passes on the first frequency with a station; a sweep without\n"
           L"one ends with NOSIGNAL. Ctrl+C stops the sweep at the next frequency: USERABORTED.\n"
           L"\n"
           L"Parameters read: FMRadioStartChannel and FMRadioEndChannel (megahertz, 76.0 to 108.0,\n"
           L"the start at or below the end; the host uses 87.5 and 108.0 when unset), ChecksPerChannel.\n";
}

void FmCommand::applyDefaults(CommandContext &context) const
{
    context.defaultParameter(L"FMRadioStartChannel", L"87.5");
    context.defaultParameter(L"FMRadioEndChannel", L"108.0");
}

void FmCommand::scan(const ruvo::DiagDevice &device, const std::wstring &title) const
{
    CaptureClasses::checkFMRadioSignal(device, title);
}

std::wstring FmCommand::rangeProblem() const
{
    return ScanRange::frequencyProblem(L"FMRadioStartChannel", L"FMRadioEndChannel");
}

std::wstring FmCommand::foundAt(const std::wstring &channel) const
{
    return L"Station found at " + channel + L" MHz.";
}

} // namespace diag
} // namespace sorvane
