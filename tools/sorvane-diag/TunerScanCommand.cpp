#include "TunerScanCommand.h"
#include "CommandContext.h"
#include "Terminal.h"

namespace sorvane {
namespace diag {

ruvo::TestResult TunerScanCommand::run(CommandContext& context)
{
    ruvo::DiagDevice device;
    if (!context.chooseDevice(fitting(), kind(), device)) return ruvo::TestResult::NODEVICE();
    applyDefaults(context);
    context.terminal().line(L"Scanning... (Ctrl+C stops the scan)");
    return context.runTest(L"scan", [&] { scan(device, CommandContext::windowTitle(device)); });
}

} // namespace diag
} // namespace sorvane
