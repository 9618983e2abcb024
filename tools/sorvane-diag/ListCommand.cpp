#include "ListCommand.h"
#include "CommandContext.h"
#include "RunReport.h"
#include "Terminal.h"

namespace sorvane {
namespace diag {

std::wstring ListCommand::summary() const { return L"list the video capture devices the library can test"; }

std::wstring ListCommand::help() const
{
    return L"Usage: sorvane-diag list [--json FILE]\n"
           L"\n"
           L"Lists the system's video capture devices as the framework's device records that the\n"
           L"other commands test: index, name, description, locator and capabilities (VideoCapture,\n"
           L"plus AnalogTVTuner and FMRadioTuner for a TV tuner, Webcam for anything else).\n"
           L"The index or the name picks a device for the other commands (--device).\n"
           L"Result: PASS when there is at least one device, NODEVICE when there is none.\n";
}

ruvo::TestResult ListCommand::run(CommandContext& context)
{
    const std::vector<ruvo::DiagDevice>& devices = context.devices();
    context.report().setDevices(devices);
    if (devices.empty()) {
        context.say(L"The system lists no video capture devices.");
        return ruvo::TestResult::NODEVICE();
    }
    context.terminal().line(std::to_wstring(devices.size()) +
                            (devices.size() == 1 ? L" video capture device:" : L" video capture devices:"));
    for (size_t i = 0; i < devices.size(); ++i) context.terminal().line(describe(devices[i], i));
    return ruvo::TestResult::PASS();
}

std::wstring ListCommand::describe(const ruvo::DiagDevice& device, size_t index)
{
    std::wstring text = L"  [" + std::to_wstring(index) + L"] " + device.name().wstr() + L"\n";
    if (!device.description().isEmpty()) text += L"      description:  " + device.description().wstr() + L"\n";
    text += L"      locator:      " + device.osLocator().wstr() + L"\n";
    text += L"      capabilities: " + device.deviceCapabilities().toString().toKELString().wstr();
    return text;
}

} // namespace diag
} // namespace sorvane
