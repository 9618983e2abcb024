// `sorvane-diag tv` and `fm` end to end against the lab's analog TV card, and Ctrl+C during a scan.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"
#include "SharedConsole.h"

#include <gtest/gtest.h>
#include <windows.h>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::ScratchFolder;
using sorvane::test::SharedConsole;

namespace {

const wchar_t *const kTuner = L"Lab Analog TV Tuner";
const DWORD kNoSignal = 11;
const DWORD kUserAborted = 17;

// The progress texts of a report, in order.
std::vector<std::string> progressTexts(const JsonValue &report)
{
    std::vector<std::string> texts;
    const JsonValue &progress = report["progress"];
    for (size_t i = 0; i < progress.size(); ++i) {
        if (progress[i].has("text"))
            texts.push_back(progress[i]["text"].text());
    }
    return texts;
}

} // namespace

TEST(SorvaneDiagTunerTest, TvScanPassesOnTheFirstChannelWithASignal)
{
    // The lab card carries channel 3 on its antenna input.
    ScratchFolder folder(L"sorvane-diag-tuner");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"tv", L"-d", kTuner, L"--set", L"TVStartChannel=2", L"--set", L"TVEndChannel=4", L"--json",
                          folder.file(L"report.json")});
    EXPECT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "Result: PASS")) << outcome.out;

    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    EXPECT_EQ("tv", report["command"].text());
    EXPECT_EQ(kTuner, sorvane::test::wide(report["device"]["name"].text()));
    const std::vector<std::string> texts = progressTexts(report);
    ASSERT_EQ(2u, texts.size()) << outcome.out;
    EXPECT_EQ("Testing channel 2", texts[0]);
    EXPECT_EQ("Testing channel 3", texts[1]);
    EXPECT_EQ(0u, report["events"].size());
}

TEST(SorvaneDiagTunerTest, TvScanWithoutSignalNamesTheRangeInItsEvent)
{
    // Channel 5 is silent on both inputs; without the cable check the second pass asks nothing.
    ScratchFolder folder(L"sorvane-diag-tuner");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"tv", L"-d", kTuner, L"--set", L"TVStartChannel=5", L"--set", L"TVEndChannel=5", L"--set",
                          L"CheckTVCable=false", L"--json", folder.file(L"report.json")});
    EXPECT_EQ(kNoSignal, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "No signal was found on channels 5 to 5.")) << outcome.out;

    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    EXPECT_EQ("NOSIGNAL", report["result"].text());
    ASSERT_EQ(1u, report["events"].size());
    EXPECT_EQ("ErrorNoSignalWithTip", report["events"][0]["key"].text());
    EXPECT_EQ(5.0, report["events"][0]["variables"]["startchannel"].number());
    EXPECT_EQ(5.0, report["events"][0]["variables"]["endchannel"].number());
}

TEST(SorvaneDiagTunerTest, FmScanFindsAStationAndReportsSilencePastTheEnd)
{
    // The lab card has a station at 88.1 MHz and none between 100 and 100.4.
    ScratchFolder folder(L"sorvane-diag-tuner");
    const HostProgram::Outcome found =
        HostProgram::run({L"fm", L"-d", kTuner, L"--set", L"FMRadioStartChannel=87.9", L"--set",
                          L"FMRadioEndChannel=88.3", L"--json", folder.file(L"found.json")});
    EXPECT_EQ(0u, found.exitCode) << found.out << found.err;
    EXPECT_EQ("PASS", JsonValue::parse(ScratchFolder::read(folder.file(L"found.json")))["result"].text());

    const HostProgram::Outcome silent =
        HostProgram::run({L"fm", L"-d", kTuner, L"--set", L"FMRadioStartChannel=100", L"--set",
                          L"FMRadioEndChannel=100.4", L"--json", folder.file(L"silent.json")});
    EXPECT_EQ(kNoSignal, silent.exitCode) << silent.out << silent.err;
    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"silent.json")));
    ASSERT_EQ(1u, report["events"].size());
    EXPECT_EQ("ErrorNoSignal", report["events"][0]["key"].text());
    // The swept band ends its bar full, also in a pipe, and no webcam's time-out is blamed.
    EXPECT_TRUE(contains(silent.out, "] 100%  Testing channel 100.4\nError: No signal was found.")) << silent.out;
    EXPECT_FALSE(contains(silent.out, "What happened")) << silent.out;
}

TEST(SorvaneDiagTunerTest, CtrlCStopsAScanAsTheUsersRequest)
{
    ScratchFolder folder(L"sorvane-diag-tuner");
    SharedConsole console;
    ASSERT_TRUE(console.ready()) << GetLastError();
    HostProgram scan({L"tv", L"-d", kTuner, L"--set", L"TVStartChannel=11", L"--set", L"TVEndChannel=60", L"--set",
                      L"CheckTVCable=false", L"--json", folder.file(L"report.json")});
    ASSERT_TRUE(scan.started());
    ASSERT_TRUE(scan.waitForOutput("Testing channel 12", 60000)) << scan.outputSoFar();
    ASSERT_TRUE(console.pressCtrlC(scan.processId())) << GetLastError();

    const HostProgram::Outcome outcome = scan.wait(60000);
    ASSERT_TRUE(outcome.finished) << outcome.out;
    EXPECT_EQ(kUserAborted, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.err, "Stop requested")) << outcome.err;
    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    EXPECT_EQ("USERABORTED", report["result"].text());
    // The scan ended at the channel after the request, far from the end of its range.
    EXPECT_LT(progressTexts(report).size(), 10u);
}
