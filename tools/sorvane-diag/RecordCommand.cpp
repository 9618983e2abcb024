#include "RecordCommand.h"
#include "CaptureClasses.h"
#include "CommandContext.h"
#include "HostPaths.h"
#include "PictureCheck.h"
#include "RecordingSize.h"
#include "RunReport.h"
#include "Terminal.h"

#include <kel/FileSystem.h>

namespace sorvane {
namespace diag {

const wchar_t *const RecordCommand::kDefaultName = L"sorvane-diag";

namespace {
// The library records for this long, whatever TestRunTime says.
const double kSeconds = 3.0;
} // namespace

std::wstring RecordCommand::summary() const
{
    return L"record a few seconds of video to an AVI file";
}

std::wstring RecordCommand::help() const
{
    return L"Usage: sorvane-diag record [--device DEVICE] [--name NAME]\n"
           L"\n"
           L"Records about three seconds of the device's video (the first webcam when none is\n"
           L"given) into %TEMP%\\NAME.avi, replacing an earlier file of that name, and prints the\n"
           L"file's path. A TV tuner records its TV picture, any other device is recorded as a webcam.\n"
           L"Ctrl+C ends the recording early: USERABORTED, and no path is printed.\n"
           L"\n"
           L"      --name NAME         the file name without folder or extension (default\n"
           L"                          \"sorvane-diag\")\n"
           L"      --strict            a bad picture (black, flat, noise, frozen) fails the test\n"
           L"\n"
           L"Parameters read: CaptureDelay (webcams).\n"
           L"\n"
           L"After a passing recording the host judges the picture on the last 30 frames of the\n"
           L"file and prints its verdict.\n";
}

std::vector<std::wstring> RecordCommand::ownOptions() const
{
    std::vector<std::wstring> options;
    options.push_back(L"--name");
    options.push_back(L"--strict");
    return options;
}

ruvo::TestResult RecordCommand::run(CommandContext &context)
{
    ruvo::DiagDevice device;
    const ruvo::TestResult ready = context.chooseCaptureDevice(device);
    if (ready != ruvo::TestResult::PASS())
        return ready;

    const std::wstring name = context.options().recordingName.empty() ? kDefaultName : context.options().recordingName;
    const std::wstring path = CaptureClasses::recordingPath(name);
    const std::wstring size = RecordingSize::estimate(device, kSeconds);
    context.terminal().line(L"Recording about 3 s into " + path + (size.empty() ? L"" : L" (" + size + L")") + L"...");
    const ruvo::TestResult result = context.runTest(L"recording", [&] {
        CaptureClasses::captureToFile(device, CommandContext::windowTitle(device), CommandContext::captureDelay(),
                                      name);
    });
    if (result == ruvo::TestResult::PASS() && kel::FileSystem::exists(kel::String(path))) {
        context.report().addFile(path, L"video");
        // The size right after the Windows path, before the host system's path under Wine.
        std::wstring shown = HostPaths::shown(path);
        shown.insert(path.size(), L" (" + RecordingSize::bytesText(HostPaths::fileSize(path)) + L")");
        context.terminal().line(L"Recorded " + shown);
    }
    return PictureCheck::judgeRecording(context, path, result);
}

} // namespace diag
} // namespace sorvane
