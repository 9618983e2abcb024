// `sorvane-diag preview` and `record` end to end against a lab webcam.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::narrow;
using sorvane::test::ScratchFolder;
using sorvane::test::wide;

namespace {

// The RGB24 camera renders through Wine's own video renderer, with no converter in between.
const wchar_t *const kCamera = L"Lab Webcam RGB24";

} // namespace

TEST(SorvaneDiagCaptureTest, PreviewShowsTheVideoForTheTimeAsked)
{
    ScratchFolder folder(L"sorvane-diag-capture");
    const HostProgram::Outcome outcome = HostProgram::run(
        {L"preview", L"-d", kCamera, L"--set", L"TestRunTime=1", L"--json", folder.file(L"report.json")});
    EXPECT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "Result: PASS")) << outcome.out;

    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    EXPECT_EQ("preview", report["command"].text());
    EXPECT_EQ("1", report["parameters"]["TestRunTime"].text());
    // The preview runs for just over TestRunTime seconds.
    EXPECT_GE(report["timings"]["previewMs"].number(), 1000.0);
    EXPECT_EQ(0u, report["events"].size());
}

TEST(SorvaneDiagCaptureTest, RecordingPrintsTheAviFileItLeft)
{
    ScratchFolder folder(L"sorvane-diag-capture");
    const std::wstring name = L"sorvane-diag-test-" + std::to_wstring(GetCurrentProcessId());
    const HostProgram::Outcome outcome =
        HostProgram::run({L"record", L"-d", kCamera, L"--name", name, L"--json", folder.file(L"report.json")});
    EXPECT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;

    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    ASSERT_EQ(1u, report["files"].size());
    const std::string path = report["files"][0]["path"].text();
    EXPECT_EQ("video", report["files"][0]["kind"].text());
    EXPECT_TRUE(contains(path, narrow(name) + ".avi")) << path;
    EXPECT_TRUE(contains(outcome.out, "Recorded " + path)) << outcome.out;

    const std::string avi = ScratchFolder::read(wide(path));
    ASSERT_GT(avi.size(), 12u);
    EXPECT_EQ("RIFF", avi.substr(0, 4));
    EXPECT_EQ("AVI ", avi.substr(8, 4));
    EXPECT_EQ(static_cast<double>(avi.size()), report["files"][0]["bytes"].number());
    DeleteFileW(wide(path).c_str());
}
