// Which device a command takes without --device, and the files a run writes: checked before
// the test runs, never overwritten, a folder of its own for every run.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"

#include <gtest/gtest.h>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::narrow;
using sorvane::test::ScratchFolder;
using sorvane::test::wide;

namespace {

const DWORD kUsageError = 2;

std::string folderOf(const std::string &path)
{
    return path.substr(0, path.find_last_of("\\/"));
}

// Removes a run's files and its folder under %TEMP%.
void removeRun(const JsonValue &report)
{
    std::string folder;
    for (size_t i = 0; i < report["files"].size(); ++i) {
        const std::string path = report["files"][i]["path"].text();
        DeleteFileW(wide(path).c_str());
        folder = folderOf(path);
    }
    if (!folder.empty())
        RemoveDirectoryW(wide(folder).c_str());
}

} // namespace

TEST(SorvaneDiagOutputsTest, WithoutADeviceEachCommandTakesWhatAPersonMeansAndSaysSo)
{
    ScratchFolder folder(L"sorvane-diag-outputs");
    // The capture card comes first in the list, but shows a black picture.
    const HostProgram::Outcome preview =
        HostProgram::run({L"preview", L"--set", L"TestRunTime=1", L"--json", folder.file(L"preview.json")});
    EXPECT_EQ(0u, preview.exitCode) << preview.out << preview.err;
    EXPECT_TRUE(contains(preview.out, " (the first webcam; --device chooses another)")) << preview.out;
    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"preview.json")));
    EXPECT_EQ("Webcam", report["device"]["capabilities"][1].text());

    const HostProgram::Outcome tv =
        HostProgram::run({L"tv", L"--set", L"TVStartChannel=3", L"--set", L"TVEndChannel=3"});
    EXPECT_EQ(0u, tv.exitCode) << tv.out;
    EXPECT_TRUE(contains(tv.out, "Lab Analog TV Tuner (the first TV tuner; --device chooses another)")) << tv.out;
}

TEST(SorvaneDiagOutputsTest, TwoQuickRunsWithoutOutGetFoldersOfTheirOwn)
{
    ScratchFolder folder(L"sorvane-diag-outputs");
    std::vector<JsonValue> reports;
    for (const wchar_t *name : {L"first.json", L"second.json"}) {
        const HostProgram::Outcome outcome =
            HostProgram::run({L"webcam", L"-d", L"Lab Webcam UYVY", L"-n", L"1", L"--json", folder.file(name)});
        ASSERT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
        reports.push_back(JsonValue::parse(ScratchFolder::read(folder.file(name))));
    }
    const std::string first = folderOf(reports[0]["files"][0]["path"].text());
    const std::string second = folderOf(reports[1]["files"][0]["path"].text());
    EXPECT_NE(first, second);
    EXPECT_FALSE(ScratchFolder::read(wide(reports[0]["files"][0]["path"].text())).empty());
    for (const JsonValue &report : reports)
        removeRun(report);
}

TEST(SorvaneDiagOutputsTest, AnOutFolderWithAnEarlierRunsImagesIsRefusedBeforeCapturing)
{
    ScratchFolder folder(L"sorvane-diag-outputs");
    const std::wstring frames = folder.file(L"frames");
    ASSERT_EQ(0u, HostProgram::run({L"webcam", L"-d", L"Lab Webcam UYVY", L"-n", L"1", L"-o", frames}).exitCode);
    const std::string earlier = ScratchFolder::read(frames + L"\\frame-001.png");

    const HostProgram::Outcome again =
        HostProgram::run({L"webcam", L"-d", L"Lab Webcam YUY2", L"-n", L"2", L"-o", frames});
    EXPECT_EQ(kUsageError, again.exitCode) << again.out << again.err;
    EXPECT_TRUE(contains(again.err, "The --out folder " + narrow(frames) +
                                        " already holds an earlier run's images (frame-001.png)"))
        << again.err;
    EXPECT_FALSE(contains(again.out, "Capturing")) << again.out;
    EXPECT_EQ(earlier, ScratchFolder::read(frames + L"\\frame-001.png"));
}

TEST(SorvaneDiagOutputsTest, MissingReportFoldersAndAnUnwritableOutAreFoundBeforeTheTest)
{
    ScratchFolder folder(L"sorvane-diag-outputs");
    const std::wstring missing = folder.file(L"missing");
    const HostProgram::Outcome json = HostProgram::run({L"webcam", L"-d", L"Lab Webcam UYVY", L"-n", L"1", L"-o",
                                                        folder.file(L"a"), L"--json", missing + L"\\r.json"});
    EXPECT_EQ(kUsageError, json.exitCode) << json.out << json.err;
    EXPECT_TRUE(contains(json.err, "The folder " + narrow(missing) + "\\ for --json " + narrow(missing) +
                                       "\\r.json does not exist."))
        << json.err;
    EXPECT_FALSE(contains(json.out, "Capturing")) << json.out;

    const HostProgram::Outcome log =
        HostProgram::run({L"tv", L"-d", L"Lab Analog TV Tuner", L"--log", missing + L"\\tv.log"});
    EXPECT_EQ(kUsageError, log.exitCode) << log.out << log.err;
    EXPECT_TRUE(contains(log.err, "for --log " + narrow(missing) + "\\tv.log does not exist.")) << log.err;
    EXPECT_FALSE(contains(log.out, "Scanning")) << log.out;

    // A file stands where the folder would have to be made.
    const std::wstring blocker = folder.file(L"blocker");
    const HANDLE file = CreateFileW(blocker.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    CloseHandle(file);
    const HostProgram::Outcome out =
        HostProgram::run({L"webcam", L"-d", L"Lab Webcam UYVY", L"-n", L"1", L"-o", blocker + L"\\frames"});
    EXPECT_EQ(kUsageError, out.exitCode) << out.out << out.err;
    EXPECT_TRUE(
        contains(out.err, "Cannot use the --out folder: Creating the folder " + narrow(blocker) + "\\frames failed: "))
        << out.err;
    EXPECT_FALSE(contains(out.out, "Capturing")) << out.out;
}

TEST(SorvaneDiagOutputsTest, TheHelpSaysWhatAnMjpgCamerasFramesBecome)
{
    ScratchFolder folder(L"sorvane-diag-outputs");
    const HostProgram::Outcome help = HostProgram::run({L"webcam", L"--help"});
    EXPECT_TRUE(contains(help.out, "an MJPG camera's frames arrive decoded by the system's MJPEG")) << help.out;
    const HostProgram::Outcome outcome =
        HostProgram::run({L"webcam", L"-d", L"Lab Webcam MJPG", L"-n", L"1", L"-o", folder.file(L"mjpg")});
    EXPECT_EQ(0u, outcome.exitCode) << outcome.out;
    EXPECT_FALSE(ScratchFolder::read(folder.file(L"mjpg\\frame-001.png")).empty()) << outcome.out;
}
