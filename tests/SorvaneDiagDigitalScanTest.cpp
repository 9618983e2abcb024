// The digital scans as a person meets them on the lab: the tuner each command takes by itself,
// the channel found named as it is looked up, the stream's health over the time it was watched,
// the country asked for and checked, the faults the library saw explained, and the kept stream.
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

const DWORD kPass = 0;
const DWORD kNoSignal = 11;
const DWORD kBadParams = 15;
const DWORD kMisconfigured = 16;
const DWORD kUserAborted = 17;

struct HostRun {
    HostProgram::Outcome outcome;
    JsonValue report;
};

HostRun host(const ScratchFolder &folder, const std::wstring &name, std::vector<std::wstring> arguments,
             const std::string &input = std::string())
{
    arguments.push_back(L"--json");
    arguments.push_back(folder.file(name + L".json"));
    HostRun run;
    run.outcome = HostProgram::run(arguments, input);
    run.report = JsonValue::parse(ScratchFolder::read(folder.file(name + L".json")));
    return run;
}

std::vector<std::wstring> range(const std::wstring &command, int first, int last)
{
    return {command, L"--set", L"DigitalStartChannel=" + std::to_wstring(first), L"--set",
            L"DigitalEndChannel=" + std::to_wstring(last)};
}

std::vector<std::wstring> with(std::vector<std::wstring> arguments, const std::vector<std::wstring> &more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

// Whole packets from a sync byte on, named in the report.
void expectKeptStream(const std::wstring &path, const JsonValue &report)
{
    const std::string bytes = ScratchFolder::read(path);
    ASSERT_GT(bytes.size(), 188u * 100);
    EXPECT_EQ(0u, bytes.size() % 188);
    for (size_t at = 0; at < bytes.size(); at += 188)
        ASSERT_EQ(0x47, static_cast<unsigned char>(bytes[at])) << "packet at " << at;
    bool named = false;
    for (size_t i = 0; i < report["files"].size(); ++i)
        named = named || report["files"][i]["kind"].text() == "transportStream";
    EXPECT_TRUE(named);
}

} // namespace

// Each command takes a tuner of its own kind when no --device names one, and says so.
TEST(SorvaneDiagDigitalScanTest, EachCommandTakesATunerOfItsOwnKind)
{
    ScratchFolder folder(L"sorvane-diag-digital-scan");
    struct Case {
        std::wstring command;
        int first;
        int last;
        std::vector<std::wstring> more;
        std::string device;
        std::string kind;
    };
    const Case cases[] = {
        {L"atsc", 8, 8, {}, "Lab ATSC QAM Tuner", "(the first ATSC tuner by its name"},
        {L"clearqam", 2, 2, {}, "Lab ATSC QAM Tuner", "(the first Clear QAM tuner by its name"},
        // A DVB-T tuner is preferred to the DTMB tuner listed before it; the stick comes first.
        {L"dvbt", 9, 9, {L"--set", L"Country=DE"}, "Lab DVB-T Stick", "(the first DVB-T or DTMB tuner by its name"},
        {L"ocur", 2, 2, {}, "Lab OpenCable Tuner", "(the first OpenCable receiver by its name"},
    };
    for (const Case &c : cases) {
        const HostRun run = host(folder, c.command, with(range(c.command, c.first, c.last), c.more));
        EXPECT_EQ(kPass, run.outcome.exitCode) << run.outcome.out << run.outcome.err;
        EXPECT_EQ(c.device, run.report["device"]["name"].text()) << run.outcome.out;
        EXPECT_TRUE(contains(run.outcome.out, c.kind)) << run.outcome.out;
    }
}

// The channel found is named by its physical channel and frequency, beside the number scanned.
TEST(SorvaneDiagDigitalScanTest, TheChannelFoundIsNamedAsAPersonLooksItUp)
{
    ScratchFolder folder(L"sorvane-diag-digital-scan");
    struct Case {
        std::wstring command;
        std::wstring device;
        int first;
        int last;
        std::vector<std::wstring> more;
        std::string sentence;
        std::string physical;
        double frequencyKHz;
    };
    const Case cases[] = {
        {L"dvbt",
         L"Lab DVB-T Tuner",
         9,
         9,
         {L"--set", L"Country=de"},
         "Signal found on channel 9 of the country's list: UHF channel 21, 474.0 MHz.",
         "UHF channel 21",
         474000},
        {L"dvbt",
         L"Lab DTMB Tuner",
         24,
         24,
         {},
         "Signal found on channel 24: DTMB channel DS-24, 562.0 MHz.",
         "DTMB channel DS-24",
         562000},
        {L"atsc",
         L"Lab ATSC QAM Tuner",
         8,
         8,
         {},
         "Signal found on channel 8: RF channel 8, 183.0 MHz (centre).",
         "RF channel 8",
         183000},
        {L"clearqam",
         L"Lab ATSC QAM Tuner",
         3,
         4,
         {},
         "Signal found on channel 4: cable channel 4, 67.25 MHz (picture carrier).",
         "cable channel 4",
         67250},
    };
    for (const Case &c : cases) {
        const HostRun run =
            host(folder, c.command, with(range(c.command, c.first, c.last), with({L"-d", c.device}, c.more)));
        EXPECT_EQ(kPass, run.outcome.exitCode) << run.outcome.out << run.outcome.err;
        EXPECT_TRUE(contains(run.outcome.out, c.sentence)) << run.outcome.out;
        ASSERT_TRUE(run.report.has("channelFound")) << run.outcome.out;
        EXPECT_EQ(c.physical, run.report["channelFound"]["physical"].text());
        EXPECT_EQ(c.frequencyKHz, run.report["channelFound"]["frequencyKHz"].number());
    }
}

// The health is measured over the stream the channel sent while on screen: a clean multiplex
// is clean, and the one without a PAT shows its PAT error.
TEST(SorvaneDiagDigitalScanTest, StreamHealthIsMeasuredOverTheStreamWatched)
{
    ScratchFolder folder(L"sorvane-diag-digital-scan");
    // Germany's 9th channel is UHF 21 (clean), its 18th UHF 30 (no PAT).
    const HostRun clean =
        host(folder, L"clean", with(range(L"dvbt", 9, 9), {L"-d", L"Lab DVB-T Tuner", L"--set", L"Country=DE"}));
    ASSERT_EQ(kPass, clean.outcome.exitCode) << clean.outcome.out << clean.outcome.err;
    const JsonValue &health = clean.report["streamHealth"];
    EXPECT_TRUE(health["priority1Clean"].flag()) << clean.outcome.out;
    EXPECT_EQ(0.0, health["patErrors"].number());
    EXPECT_GT(health["packets"].number(), 64.0);
    EXPECT_GT(health["durationMs"].number(), 0.0);
    EXPECT_TRUE(contains(clean.outcome.out, "TR 101 290 priority 1: no errors")) << clean.outcome.out;
    EXPECT_TRUE(contains(clean.outcome.out, " on screen;")) << clean.outcome.out;

    const HostRun noPat =
        host(folder, L"nopat", with(range(L"dvbt", 18, 18), {L"-d", L"Lab DVB-T Tuner", L"--set", L"Country=DE"}));
    ASSERT_EQ(kPass, noPat.outcome.exitCode) << noPat.outcome.out << noPat.outcome.err;
    EXPECT_TRUE(contains(noPat.outcome.out, "UHF channel 30")) << noPat.outcome.out;
    EXPECT_FALSE(noPat.report["streamHealth"]["priority1Clean"].flag());
    EXPECT_TRUE(noPat.report["streamHealth"]["patMissing"].flag());
    EXPECT_GE(noPat.report["streamHealth"]["patErrors"].number(), 1.0);
    EXPECT_TRUE(contains(noPat.outcome.out, "(no PAT at all)")) << noPat.outcome.out;
}

// Without a country and without --interactive the event's text is whole and the person is
// told how to choose one; a country that is not a two-letter code is refused before the scan.
TEST(SorvaneDiagDigitalScanTest, TheCountryIsFilledInCheckedAndExplained)
{
    ScratchFolder folder(L"sorvane-diag-digital-scan");
    const HostRun none = host(folder, L"none", {L"dvbt", L"-d", L"Lab DVB-T Tuner"});
    EXPECT_EQ(kMisconfigured, none.outcome.exitCode) << none.outcome.out << none.outcome.err;
    EXPECT_FALSE(contains(none.outcome.out, "{")) << none.outcome.out;
    EXPECT_TRUE(contains(none.outcome.out, "--set Country=CODE")) << none.outcome.out;
    ASSERT_EQ(1u, none.report["events"].size());
    const JsonValue &event = none.report["events"][0];
    EXPECT_EQ("SetCountryName", event["key"].text());
    EXPECT_TRUE(event["variables"].has("CountryName"));
    EXPECT_FALSE(contains(event["message"].text(), "{CountryName}")) << event["message"].text();

    const HostRun name = host(folder, L"name", {L"dvbt", L"-d", L"Lab DVB-T Tuner", L"--set", L"Country=germany"});
    EXPECT_EQ(kBadParams, name.outcome.exitCode) << name.outcome.out << name.outcome.err;
    EXPECT_TRUE(contains(name.outcome.out, "The country \"germany\" was not accepted")) << name.outcome.out;
    EXPECT_TRUE(contains(name.outcome.out, "--set Country=DE")) << name.outcome.out;
    EXPECT_FALSE(contains(name.outcome.out, "0x80070057")) << name.outcome.out;

    const HostRun unknown =
        host(folder, L"unknown", {L"dvbt", L"-d", L"Lab DVB-T Tuner", L"--set", L"Country=Atlantis"});
    EXPECT_EQ(kBadParams, unknown.outcome.exitCode) << unknown.outcome.out << unknown.outcome.err;
    EXPECT_TRUE(contains(unknown.outcome.out, "two-letter code")) << unknown.outcome.out;

    // A country the network provider has no channels for would fail to build the graph.
    const HostRun unlisted = host(folder, L"unlisted", {L"dvbt", L"-d", L"Lab DVB-T Tuner", L"--set", L"Country=us"});
    EXPECT_EQ(kBadParams, unlisted.outcome.exitCode) << unlisted.outcome.out << unlisted.outcome.err;
    EXPECT_TRUE(contains(unlisted.outcome.out, "has no channel list for it")) << unlisted.outcome.out;

    const HostProgram::Outcome help = HostProgram::run({L"dvbt", L"--help"});
    EXPECT_TRUE(contains(help.out, "two-letter country code")) << help.out;
}

// With --interactive and no display (the lab's prefix has none) the country is asked at the
// terminal, by code or by name; input that ends without an answer ends the command at once.
TEST(SorvaneDiagDigitalScanTest, WithoutADisplayTheCountryIsAskedAtTheTerminal)
{
    ScratchFolder folder(L"sorvane-diag-digital-scan");
    const std::vector<std::wstring> ask =
        with(range(L"dvbt", 9, 9), {L"-d", L"Lab DVB-T Tuner", L"--interactive", L"--set", L"CheckTVCable=false"});
    const HostRun byName = host(folder, L"byname", ask, "atlantis\ngermany\n");
    EXPECT_EQ(kPass, byName.outcome.exitCode) << byName.outcome.out << byName.outcome.err;
    EXPECT_TRUE(contains(byName.outcome.out, "DE  Germany")) << byName.outcome.out;
    EXPECT_TRUE(contains(byName.outcome.out, "\"atlantis\" is not in the list")) << byName.outcome.out;
    EXPECT_TRUE(contains(byName.outcome.out, "Country is set to DE (Germany")) << byName.outcome.out;
    EXPECT_TRUE(contains(byName.outcome.out, "UHF channel 21")) << byName.outcome.out;

    const HostRun byCode = host(folder, L"bycode", ask, "de\n");
    EXPECT_EQ(kPass, byCode.outcome.exitCode) << byCode.outcome.out << byCode.outcome.err;

    const HostRun ended = host(folder, L"ended", ask, "");
    EXPECT_EQ(kMisconfigured, ended.outcome.exitCode) << ended.outcome.out << ended.outcome.err;
    EXPECT_TRUE(contains(ended.outcome.out, "--set Country=CODE")) << ended.outcome.out;
}

TEST(SorvaneDiagDigitalScanTest, OneCtrlCEndsTheCountryQuestion)
{
    SharedConsole console;
    ASSERT_TRUE(console.ready()) << GetLastError();
    HostProgram program({L"dvbt", L"-d", L"Lab DVB-T Tuner", L"--interactive"}, std::string(),
                        HostProgram::InputEnd::KeepOpen);
    ASSERT_TRUE(program.started());
    ASSERT_TRUE(program.waitForOutput("Type the country's code or name", 60000)) << program.outputSoFar();
    EXPECT_TRUE(console.pressCtrlC(program.processId())) << GetLastError();
    const HostProgram::Outcome outcome = program.wait(60000);
    ASSERT_TRUE(outcome.finished) << outcome.out;
    EXPECT_EQ(kUserAborted, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_FALSE(contains(outcome.out, "Scanning")) << outcome.out;
}

// An OpenCable receiver is tuned by channel number; its channel map places cable channel 2
// where the cable plan has it, and the device's own signal statistics find it there.
TEST(SorvaneDiagDigitalScanTest, TheOpenCableReceiverFindsCableChannelTwo)
{
    ScratchFolder folder(L"sorvane-diag-digital-scan");
    const HostRun run = host(folder, L"ocur", with(range(L"ocur", 2, 2), {L"-d", L"Lab OpenCable Tuner"}));
    EXPECT_EQ(kPass, run.outcome.exitCode) << run.outcome.out << run.outcome.err;
    EXPECT_TRUE(contains(run.outcome.out, "Signal found on channel 2: virtual channel 2")) << run.outcome.out;
}

// Digital faults are told by what the library saw, not put down to the antenna or cable.
TEST(SorvaneDiagDigitalScanTest, DigitalFaultsAreExplainedByWhatTheLibrarySaw)
{
    ScratchFolder folder(L"sorvane-diag-digital-scan");
    const HostRun scrambled =
        host(folder, L"scrambled", with(range(L"clearqam", 3, 3), {L"-d", L"Lab ATSC QAM Tuner"}));
    EXPECT_EQ(kNoSignal, scrambled.outcome.exitCode) << scrambled.outcome.out << scrambled.outcome.err;
    EXPECT_TRUE(contains(scrambled.outcome.out,
                         "channel 3: a transport stream arrived, but the library found no program in the clear"))
        << scrambled.outcome.out;

    const HostRun run =
        host(folder, L"faults",
             with(range(L"clearqam", 5, 7), {L"-d", L"Lab ATSC QAM Tuner", L"--set", L"CheckTVCable=false"}));
    EXPECT_EQ(kNoSignal, run.outcome.exitCode) << run.outcome.out << run.outcome.err;
    const std::string &out = run.outcome.out;
    EXPECT_TRUE(contains(out, "channel 5: the tuner accepted the tune, but not one byte of transport stream")) << out;
    EXPECT_TRUE(contains(out, "channel 7: the tuner refused the tune (0x8007001F")) << out;
    EXPECT_TRUE(contains(out, "they are not what a loose antenna or cable looks like")) << out;

    const HostRun backwards = host(folder, L"backwards", with(range(L"atsc", 20, 10), {L"-d", L"Lab ATSC QAM Tuner"}));
    EXPECT_EQ(kBadParams, backwards.outcome.exitCode) << backwards.outcome.out << backwards.outcome.err;
    EXPECT_TRUE(contains(backwards.outcome.out, "DigitalEndChannel (10) is below DigitalStartChannel (20)"))
        << backwards.outcome.out;
}

// --keep-ts writes the stream the scan ended on; a tuner whose scan graph has no sample grabber
// has the channel tuned once more by the host and kept.
TEST(SorvaneDiagDigitalScanTest, KeepTsWritesTheScannedStream)
{
    ScratchFolder folder(L"sorvane-diag-digital-scan");
    const std::wstring found = folder.file(L"found.ts");
    const HostRun pass =
        host(folder, L"keep", with(range(L"clearqam", 2, 2), {L"-d", L"Lab ATSC QAM Tuner", L"--keep-ts", found}));
    ASSERT_EQ(kPass, pass.outcome.exitCode) << pass.outcome.out << pass.outcome.err;
    EXPECT_TRUE(contains(pass.outcome.out, "packets of the channel found")) << pass.outcome.out;
    expectKeptStream(found, pass.report);

    const std::wstring last = folder.file(L"last.ts");
    const HostRun none = host(folder, L"keeplast",
                              with(range(L"dvbt", 10, 10), {L"-d", L"Lab DVB-T Tuner", L"--set", L"Country=DE",
                                                            L"--set", L"CheckTVCable=false", L"--keep-ts", last}));
    EXPECT_EQ(kNoSignal, none.outcome.exitCode) << none.outcome.out << none.outcome.err;
    EXPECT_TRUE(contains(none.outcome.out, "of the last channel tried")) << none.outcome.out;

    const std::wstring atscFile = folder.file(L"a.ts");
    const HostRun atsc =
        host(folder, L"keepatsc", with(range(L"atsc", 8, 8), {L"-d", L"Lab ATSC QAM Tuner", L"--keep-ts", atscFile}));
    EXPECT_EQ(kPass, atsc.outcome.exitCode) << atsc.outcome.out << atsc.outcome.err;
    EXPECT_TRUE(contains(atsc.outcome.out, "scan graph has no sample grabber: channel 8 is tuned once more"))
        << atsc.outcome.out;
    EXPECT_TRUE(contains(atsc.outcome.out, "packets of channel 8 (the channel found, tuned again after the scan for"))
        << atsc.outcome.out;
    expectKeptStream(atscFile, atsc.report);
}
