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
    const ruvo::TestResult result =
        context.runTest(L"scan", [&] { scan(device, CommandContext::windowTitle(device)); });
    if (result == ruvo::TestResult::PASS()) afterPass(context);
    return result;
}

} // namespace diag
} // namespace sorvane
