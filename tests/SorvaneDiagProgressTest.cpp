// What the host shows while a test runs: a long wait for frames is visibly a wait with the
// way out, a scan's second pass is announced, and a finished sweep's bar ends full.
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

const wchar_t *const kTuner = L"Lab Analog TV Tuner";

double lastPercent(const JsonValue &report)
{
    double percent = -1;
    for (size_t i = 0; i < report["progress"].size(); ++i) {
        if (report["progress"][i].has("percent"))
            percent = report["progress"][i]["percent"].number();
    }
    return percent;
}

} // namespace

TEST(SorvaneDiagProgressTest, AWaitForFramesShowsItsLengthAndHowToStopIt)
{
    // The silent camera never delivers; the library waits its full time-out.
    ScratchFolder folder(L"sorvane-diag-progress");
    SharedConsole console;
    ASSERT_TRUE(console.ready()) << GetLastError();
    HostProgram capture({L"webcam", L"-d", L"Lab Webcam Silent", L"-o", folder.file(L"frames")});
    ASSERT_TRUE(capture.started());
    EXPECT_TRUE(capture.waitForOutput("waiting for the device: 5 s (Ctrl+C stops)", 60000)) << capture.outputSoFar();
    EXPECT_TRUE(contains(capture.outputSoFar(), "%  waiting for the device")) << capture.outputSoFar();

    // One press ends the wait as the person's stop.
    ASSERT_TRUE(console.pressCtrlC(capture.processId()));
    const HostProgram::Outcome outcome = capture.wait(60000);
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(17u, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "Result: USERABORTED")) << outcome.out;
    EXPECT_FALSE(contains(outcome.out, "What happened")) << outcome.out;
}

TEST(SorvaneDiagProgressTest, TheTvScanNamesItsInputsAndAnnouncesItsSecondPass)
{
    const HostProgram::Outcome outcome =
        HostProgram::run({L"tv", L"-d", kTuner, L"--set", L"TVStartChannel=5", L"--set", L"TVEndChannel=5", L"--set",
                          L"CheckTVCable=false"});
    EXPECT_TRUE(contains(outcome.out, "Each channel is checked on the antenna input, then on the cable input."))
        << outcome.out;
    const size_t second = outcome.out.find("Attempt 2: the test starts again and the bar restarts.");
    ASSERT_NE(std::string::npos, second) << outcome.out;
    EXPECT_LT(outcome.out.find("Testing channel 5"), second);

    const HostProgram::Outcome cableOnly =
        HostProgram::run({L"tv", L"-d", kTuner, L"--set", L"TVStartChannel=3", L"--set", L"TVEndChannel=3", L"--set",
                          L"SignalType=CABLE", L"--set", L"CheckTVCable=false"});
    EXPECT_TRUE(contains(cableOnly.out, "Each channel is checked on the cable input only.")) << cableOnly.out;
}

TEST(SorvaneDiagProgressTest, AnFmSweepWithoutAStationEndsItsBarFull)
{
    ScratchFolder folder(L"sorvane-diag-progress");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"fm", L"-d", kTuner, L"--set", L"FMRadioStartChannel=100", L"--set",
                          L"FMRadioEndChannel=100.4", L"--json", folder.file(L"report.json")});
    EXPECT_EQ(11u, outcome.exitCode) << outcome.out;
    EXPECT_EQ(100.0, lastPercent(JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")))));
}
