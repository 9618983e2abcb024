#include "WebcamCommand.h"
#include "CaptureClasses.h"
#include "CommandContext.h"
#include "FrameSaver.h"
#include "HostPaths.h"
#include "PictureCheck.h"
#include "RunReport.h"
#include "Terminal.h"

namespace sorvane {
namespace diag {

std::wstring WebcamCommand::summary() const
{
    return L"capture frames from a webcam and save them as images with a contact sheet";
}

std::wstring WebcamCommand::help() const
{
    return L"Usage: sorvane-diag webcam [--device DEVICE] [--frames N] [--out FOLDER]\n"
           L"\n"
           L"Captures N frames from a webcam (the first one when no device is given) and saves\n"
           L"them in FOLDER as frame-001.png ..., whatever the format the library hands them over\n"
           L"in (RGB24, YUY2, UYVY: an MJPG camera's frames arrive decoded by the system's MJPEG\n"
           L"decoder), or as the JPEG bytes in frame-001.jpg ... should they arrive still\n"
           L"compressed; and contact-sheet.png with all frames.\n"
           L"\n"
           L"  -n, --frames N          frames to capture, 1 to 500 (default 5)\n"
           L"  -o, --out FOLDER        where the images go, created when missing; a folder with\n"
           L"                          an earlier run's images is refused (default: a new folder\n"
           L"                          under %TEMP%\\sorvane-diag\\ for every run)\n"
           L"      --strict            a bad picture (black, flat, noise, frozen) fails the test\n"
           L"\n"
           L"Parameters read: CaptureDelay (milliseconds of video dropped first while the camera\n"
           L"settles; default 0).\n"
           L"\n"
           L"The host judges the frames and prints a verdict (good, black, flat, noise, frozen)\n"
           L"with its measures, also in the report's \"picture\" member.\n";
}

std::vector<std::wstring> WebcamCommand::ownOptions() const
{
    std::vector<std::wstring> options;
    options.push_back(L"--frames");
    options.push_back(L"--out");
    options.push_back(L"--strict");
    return options;
}

ruvo::TestResult WebcamCommand::run(CommandContext &context)
{
    ruvo::DiagDevice device;
    if (!context.chooseDevice(ruvo::DeviceCapability::Webcam(), L"webcam", device))
        return ruvo::TestResult::NODEVICE();
    const ruvo::TestResult capturable = context.canCapture(device);
    if (capturable != ruvo::TestResult::PASS())
        return capturable;

    const unsigned count = context.options().frames;
    context.terminal().line(L"Capturing " + std::to_wstring(count) + (count == 1 ? L" frame..." : L" frames..."));
    CapturedFrames frames;
    const ruvo::TestResult result = context.runTest(L"capture", [&] {
        frames = CaptureClasses::captureFrames(device, CommandContext::windowTitle(device),
                                               CommandContext::captureDelay(), count);
    });
    if (result == ruvo::TestResult::PASS())
        save(context, frames);
    return PictureCheck::judge(context, frames, result);
}

void WebcamCommand::save(CommandContext &context, const CapturedFrames &frames)
{
    context.terminal().line(L"Got " + std::to_wstring(frames.buffers.size()) +
                            (frames.buffers.size() == 1 ? L" frame of " : L" frames of ") +
                            std::to_wstring(frames.width) + L"x" + std::to_wstring(frames.height) + L" " +
                            CapturedFrames::layoutName(frames.layout) + L".");
    const std::wstring folder = context.options().outputFolder.empty()
                                    ? HostPaths::defaultOutputFolder(L"webcam")
                                    : HostPaths::absolute(context.options().outputFolder);
    RunReport::Phase timing(context.report(), L"saving");
    const FrameSaver::SavedFiles saved = FrameSaver::save(frames, folder);
    for (const std::wstring &path : saved.frames)
        context.report().addFile(path, L"frame");
    if (!saved.contactSheet.empty())
        context.report().addFile(saved.contactSheet, L"contactSheet");
    const size_t count = saved.frames.size();
    context.terminal().line(L"Saved " + std::to_wstring(count) + (count == 1 ? L" image" : L" images") +
                            L" and a contact sheet in " + HostPaths::shown(folder));
}

} // namespace diag
} // namespace sorvane
