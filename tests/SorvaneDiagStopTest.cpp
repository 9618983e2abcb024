// Ctrl+C at the host: one press ends a preview or a recording early with USERABORTED, a
// second press quits at once with a status of its own and still leaves the report.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"
#include "SharedConsole.h"

#include <gtest/gtest.h>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::ScratchFolder;
using sorvane::test::SharedConsole;

namespace {

const DWORD kUserAborted = 17;
const DWORD kForcedQuit = 4;

// Starts the host, waits for `ready` on its output, presses Ctrl+C `presses` times. Its
// standard input stays open, as a person's terminal does.
HostProgram::Outcome interrupt(const std::vector<std::wstring> &arguments, const std::string &ready, int presses)
{
    SharedConsole console;
    EXPECT_TRUE(console.ready()) << GetLastError();
    HostProgram program(arguments, std::string(), HostProgram::InputEnd::KeepOpen);
    EXPECT_TRUE(program.started());
    EXPECT_TRUE(program.waitForOutput(ready, 60000)) << program.outputSoFar();
    for (int i = 0; i < presses; ++i) {
        EXPECT_TRUE(console.pressCtrlC(program.processId())) << GetLastError();
        // Each press is seen before the next, as a person's would be.
        if (i + 1 < presses) {
            EXPECT_TRUE(program.waitForError("Stop requested", 60000)) << program.errorSoFar();
        }
    }
    return program.wait(60000);
}

} // namespace

TEST(SorvaneDiagStopTest, CtrlCEndsAPreviewAndARecordingEarly)
{
    ScratchFolder folder(L"sorvane-diag-stop");
    // A minute of preview would end with PASS; the request ends it first.
    const HostProgram::Outcome preview = interrupt(
        {L"preview", L"-d", L"Lab Webcam RGB24", L"--set", L"TestRunTime=60", L"--json", folder.file(L"preview.json")},
        "Previewing", 1);
    ASSERT_TRUE(preview.finished) << preview.out;
    EXPECT_EQ(kUserAborted, preview.exitCode) << preview.out << preview.err;
    EXPECT_TRUE(contains(preview.out, "Result: USERABORTED")) << preview.out;
    EXPECT_EQ("USERABORTED", JsonValue::parse(ScratchFolder::read(folder.file(L"preview.json")))["result"].text());

    const std::wstring name = L"sorvane-diag-stop-" + std::to_wstring(GetCurrentProcessId());
    const HostProgram::Outcome record =
        interrupt({L"record", L"-d", L"Lab Webcam RGB24", L"--name", name, L"--json", folder.file(L"record.json")},
                  "Recording", 1);
    ASSERT_TRUE(record.finished) << record.out;
    EXPECT_EQ(kUserAborted, record.exitCode) << record.out << record.err;
    EXPECT_FALSE(contains(record.out, "Recorded ")) << record.out;
    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"record.json")));
    EXPECT_EQ("USERABORTED", report["result"].text());
    EXPECT_EQ(0u, report["files"].size());
}

TEST(SorvaneDiagStopTest, ASecondCtrlCQuitsAtOnceAndStillWritesTheReport)
{
    // The hung camera's driver keeps the graph's Stop waiting two minutes after the first press.
    ScratchFolder folder(L"sorvane-diag-stop");
    const HostProgram::Outcome outcome = interrupt(
        {L"webcam", L"-d", L"Lab Webcam Hung", L"-o", folder.file(L"frames"), L"--json", folder.file(L"report.json")},
        "Capturing", 2);
    ASSERT_TRUE(outcome.finished) << outcome.out;
    EXPECT_EQ(kForcedQuit, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.err, "Quit at once by a second Ctrl+C")) << outcome.err;
    EXPECT_FALSE(contains(outcome.out, "Result: ")) << outcome.out;

    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    EXPECT_EQ(JsonValue::NUL, report["result"].type());
    EXPECT_EQ(4.0, report["exitCode"].number());
    EXPECT_EQ("Lab Webcam Hung", report["device"]["name"].text());
    ASSERT_GT(report["messages"].size(), 0u);
    EXPECT_TRUE(contains(report["messages"][report["messages"].size() - 1].text(), "second Ctrl+C"));
}

TEST(SorvaneDiagStopTest, CtrlCAnswersAWaitingQuestionWithAbort)
{
    // No signal on channel 5: before its second pass the scan asks to check the cable, and
    // waits without limit for an answer that nobody types.
    const HostProgram::Outcome outcome =
        interrupt({L"tv", L"-d", L"Lab Analog TV Tuner", L"--set", L"TVStartChannel=5", L"--set", L"TVEndChannel=5",
                   L"--set", L"SignalType=ANTENNA", L"--interactive"},
                  "Type r and Enter to retry", 1);
    ASSERT_TRUE(outcome.finished) << outcome.out;
    EXPECT_EQ(kUserAborted, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "Stop requested: the question is answered with abort.")) << outcome.out;
    EXPECT_FALSE(contains(outcome.out, "Attempt 2")) << outcome.out;
}

TEST(SorvaneDiagStopTest, TheHelpListsTheForcedQuitBesideTheResults)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"--help"});
    EXPECT_EQ(0u, outcome.exitCode);
    EXPECT_TRUE(contains(outcome.out, "  4   ")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "quit at once by a second Ctrl+C")) << outcome.out;
}
