// The console host's command line: help, usage errors, typed parameters and exit statuses,
// seen as a person's shell sees them.
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
const DWORD kBadParams = 15;

const wchar_t *const kCommands[] = {L"list", L"webcam", L"preview", L"record", L"tv", L"fm", L"demo"};

} // namespace

TEST(SorvaneDiagCommandLineTest, HelpListsCommandsParametersAndExitStatuses)
{
    const HostProgram::Outcome help = HostProgram::run({L"--help"});
    ASSERT_TRUE(help.finished);
    EXPECT_EQ(0u, help.exitCode);
    for (const wchar_t *command : kCommands)
        EXPECT_TRUE(contains(help.out, "  " + narrow(command) + " ")) << narrow(command);
    EXPECT_TRUE(contains(help.out, "TVStartChannel"));
    EXPECT_TRUE(contains(help.out, "UINT32"));
    EXPECT_TRUE(contains(help.out, "--interactive"));
    // Every result has its own exit status, listed with its name.
    for (const char *line :
         {"0   PASS", "10  FAIL", "11  NOSIGNAL", "12  NODEVICE", "13  DEVICEBUSY", "14  CANNOTRUN", "15  BADPARAMS",
          "16  MISCONFIGURED", "17  USERABORTED", "18  NOTSUPPORTED", "19  TESTNOTSTARTED"})
        EXPECT_TRUE(contains(help.out, line)) << line;
    EXPECT_TRUE(help.err.empty()) << help.err;
}

TEST(SorvaneDiagCommandLineTest, EveryCommandHasItsOwnHelp)
{
    for (const wchar_t *command : kCommands) {
        const std::string usage = "Usage: sorvane-diag " + narrow(command);
        const HostProgram::Outcome option = HostProgram::run({command, L"--help"});
        EXPECT_EQ(0u, option.exitCode) << narrow(command);
        EXPECT_EQ(0u, option.out.find(usage)) << option.out;
        EXPECT_TRUE(contains(option.out, "--json FILE")) << narrow(command);

        const HostProgram::Outcome word = HostProgram::run({L"help", command});
        EXPECT_EQ(0u, word.exitCode) << narrow(command);
        EXPECT_EQ(option.out, word.out);
    }
}

TEST(SorvaneDiagCommandLineTest, MistakesAreUsageErrorsThatSayWhatIsWrong)
{
    const struct {
        std::vector<std::wstring> arguments;
        const char *says;
    } mistakes[] = {
        {{}, "No command given"},
        {{L"frobnicate"}, "Unknown command \"frobnicate\""},
        {{L"webcam", L"--bogus"}, "Unknown option --bogus"},
        {{L"webcam", L"--frames"}, "--frames needs a value"},
        {{L"webcam", L"--frames", L"0"}, "--frames takes a whole number from 1 to 500"},
        {{L"webcam", L"--frames=12x"}, "got \"12x\""},
        {{L"list", L"--frames", L"3"}, "list takes no --frames"},
        {{L"list", L"--device", L"0"}, "list takes no --device"},
        {{L"tv", L"--name", L"x"}, "tv takes no --name"},
        {{L"record", L"--name", L"a\\b"}, "--name takes a file name"},
        {{L"list", L"--set", L"TVStartChannel"}, "--set takes KEY=VALUE"},
        {{L"list", L"--log", L"x.log", L"--log-level", L"loud"}, "--log-level takes detail, info"},
        {{L"list", L"--log-level", L"info"}, "--log-level needs --log FILE"},
        {{L"list", L"extra"}, "Unexpected argument \"extra\""},
    };
    for (const auto &mistake : mistakes) {
        const HostProgram::Outcome outcome = HostProgram::run(mistake.arguments);
        EXPECT_EQ(kUsageError, outcome.exitCode) << mistake.says;
        EXPECT_TRUE(contains(outcome.err, mistake.says)) << outcome.err;
        EXPECT_TRUE(contains(outcome.err, "sorvane-diag --help")) << outcome.err;
        EXPECT_TRUE(outcome.out.empty()) << outcome.out;
    }
}

TEST(SorvaneDiagCommandLineTest, ParametersMustBeDeclaredKeysWithValuesOfTheirType)
{
    const struct {
        const wchar_t *setting;
        std::vector<const char *> says;
    } wrong[] = {
        {L"NoSuchKey=1", {"Unknown parameter \"NoSuchKey\"", "TVStartChannel", "CaptureDelay"}},
        {L"tvstartchannel=3", {"did you mean TVStartChannel?"}},
        {L"TVStartChannel=abc", {"TVStartChannel", "UINT32", "\"abc\""}},
        {L"TVEndChannel=-1", {"TVEndChannel", "UINT32"}},
        {L"CheckTVCable=maybe", {"CheckTVCable", "BOOLEAN"}},
        {L"FMRadioStartChannel=88,1", {"FMRadioStartChannel", "DOUBLE"}},
    };
    for (const auto &each : wrong) {
        const HostProgram::Outcome outcome = HostProgram::run({L"list", L"--set", each.setting});
        EXPECT_EQ(kBadParams, outcome.exitCode) << narrow(each.setting);
        for (const char *part : each.says)
            EXPECT_TRUE(contains(outcome.err, part)) << outcome.err;
    }
}

TEST(SorvaneDiagCommandLineTest, ABadParameterStillWritesTheReport)
{
    ScratchFolder folder(L"sorvane-diag-args");
    const std::wstring report = folder.file(L"report.json");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"tv", L"--set", L"TVStartChannel=2", L"--set", L"CheckTVCable=maybe", L"--json", report});
    EXPECT_EQ(kBadParams, outcome.exitCode);

    const JsonValue json = JsonValue::parse(ScratchFolder::read(report));
    EXPECT_EQ("tv", json["command"].text());
    EXPECT_EQ("BADPARAMS", json["result"].text());
    EXPECT_EQ(15.0, json["exitCode"].number());
    ASSERT_EQ(1u, json["messages"].size());
    EXPECT_TRUE(contains(json["messages"][0].text(), "CheckTVCable"));
    // Nothing ran: no device was chosen and no event posted.
    EXPECT_FALSE(json.has("device"));
    EXPECT_EQ(0u, json["events"].size());
}

TEST(SorvaneDiagCommandLineTest, ParametersOfEveryTypeAreTakenAndReported)
{
    ScratchFolder folder(L"sorvane-diag-args");
    const std::wstring report = folder.file(L"report.json");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"list", L"--set", L"TVStartChannel=4", L"-s", L"CheckTVCable=false",
                          L"--set=SignalType=cable", L"--set", L"FMRadioStartChannel=88.1", L"--json=" + report});
    ASSERT_TRUE(outcome.finished);
    EXPECT_NE(kBadParams, outcome.exitCode) << outcome.err;
    EXPECT_NE(kUsageError, outcome.exitCode) << outcome.err;

    const JsonValue parameters = JsonValue::parse(ScratchFolder::read(report))["parameters"];
    EXPECT_EQ("4", parameters["TVStartChannel"].text());
    EXPECT_EQ("false", parameters["CheckTVCable"].text());
    EXPECT_EQ("cable", parameters["SignalType"].text());
    EXPECT_EQ("88.1", parameters["FMRadioStartChannel"].text());
}

TEST(SorvaneDiagCommandLineTest, TheReportCanGoToStandardOutput)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"list", L"--json", L"-"});
    ASSERT_TRUE(outcome.finished);
    // Standard output holds the report alone; what a person reads went to standard error.
    const JsonValue json = JsonValue::parse(outcome.out);
    EXPECT_EQ("list", json["command"].text());
    EXPECT_EQ(static_cast<double>(outcome.exitCode), json["exitCode"].number());
    EXPECT_TRUE(contains(outcome.err, "Result: "));
}

TEST(SorvaneDiagCommandLineTest, ADeviceIndexBeyondTheListIsNoDevice)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"webcam", L"--device", L"999"});
    EXPECT_EQ(12u, outcome.exitCode);
    EXPECT_TRUE(contains(outcome.out, "There is no device 999")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "Result: NODEVICE (no suitable device was found)")) << outcome.out;
}
