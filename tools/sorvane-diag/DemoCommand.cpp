#include "DemoCommand.h"
#include "CommandContext.h"
#include "Terminal.h"

namespace sorvane {
namespace diag {

DemoCommand::DemoCommand(Command &list, Command &webcam) : m_list(list), m_webcam(webcam) {}

std::wstring DemoCommand::summary() const
{
    return L"list the devices, then capture frames from the first webcam";
}

std::wstring DemoCommand::help() const
{
    return L"Usage: sorvane-diag demo [--frames N] [--out FOLDER]\n"
           L"\n"
           L"Shows the library at work: lists the video capture devices (under Wine, the lab's\n"
           L"simulated ones), then captures frames from the first webcam and saves them as images\n"
           L"with a contact sheet, printing the folder. The options are those of `webcam`.\n";
}

std::vector<std::wstring> DemoCommand::ownOptions() const
{
    return m_webcam.ownOptions();
}

ruvo::TestResult DemoCommand::run(CommandContext &context)
{
    const ruvo::TestResult listed = m_list.run(context);
    if (listed != ruvo::TestResult::PASS())
        return listed;
    context.terminal().line(L"");
    return m_webcam.run(context);
}

} // namespace diag
} // namespace sorvane
