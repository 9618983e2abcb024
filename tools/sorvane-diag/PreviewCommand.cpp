#include "PreviewCommand.h"
#include "CaptureClasses.h"
#include "CommandContext.h"
#include "DisplayCheck.h"
#include "MessageBoxAnswerer.h"
#include "PictureCheck.h"
#include "Terminal.h"
#include "UsageError.h"

#include <ModuleRegistration.h>

#include <memory>

namespace sorvane {
namespace diag {

std::wstring PreviewCommand::summary() const
{
    return L"show a device's live video in a window";
}

std::wstring PreviewCommand::help() const
{
    return L"Usage: sorvane-diag preview [--device DEVICE] [--set TestRunTime=SECONDS]\n"
           L"\n"
           L"Shows the device's live video in a window (the first webcam when none is given): a\n"
           L"TV tuner shows its TV picture, any other device is previewed as a webcam. Ctrl+C ends\n"
           L"the preview early: USERABORTED.\n"
           L"\n"
           L"Parameters read: TestRunTime (seconds, default 3); Interactive (when true, the library\n"
           L"asks in a Windows message box whether the picture was right; without a display the\n"
           L"question is asked at the terminal with --interactive, and refused without it);\n"
           L"CaptureDelay (webcams).\n"
           L"\n"
           L"      --strict            a bad picture (black, flat, noise, frozen) fails the test\n"
           L"\n"
           L"After a passing preview the host captures a sample of 5 frames from the device (from a\n"
           L"TV tuner, a recording of a few seconds) and prints its verdict on the picture.\n";
}

bool PreviewCommand::asksInABox()
{
    return g_interactive->isset() && g_interactive->value().valueBool();
}

std::vector<std::wstring> PreviewCommand::ownOptions() const
{
    return std::vector<std::wstring>(1, L"--strict");
}

ruvo::TestResult PreviewCommand::run(CommandContext &context)
{
    ruvo::DiagDevice device;
    const ruvo::TestResult ready = context.chooseCaptureDevice(device);
    if (ready != ruvo::TestResult::PASS())
        return ready;

    const std::wstring title = CommandContext::windowTitle(device);
    std::unique_ptr<MessageBoxAnswerer> answerer;
    if (asksInABox() && !DisplayCheck::canShowWindows()) {
        // Nobody would see the library's question, and the preview would wait on it for ever.
        if (!context.options().interactive)
            throw UsageError(L"Interactive=true makes the library ask in a message box whether the preview "
                             L"passed, and there is no display to show it on. Add --interactive to answer at "
                             L"the terminal, or leave Interactive unset.");
        answerer.reset(new MessageBoxAnswerer(context.terminal(), title));
    }
    context.terminal().line(L"Previewing...");
    const ruvo::TestResult result = context.runTest(
        L"preview", [&] { CaptureClasses::captureToScreen(device, title, CommandContext::captureDelay()); });
    answerer.reset();
    return PictureCheck::judgeSample(context, device, result);
}

} // namespace diag
} // namespace sorvane
