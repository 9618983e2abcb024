// `sorvane-diag atsc`, `clearqam`, `dvbt` and `ocur` end to end against the lab's BDA cards:
// each finds the lab's broadcast channel, and a digital scan's report gives the stream health.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"

#include <gtest/gtest.h>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::ScratchFolder;

namespace {

const DWORD kNotSupported = 18;

JsonValue scan(const ScratchFolder &folder, const std::wstring &command, const std::vector<std::wstring> &options)
{
    std::vector<std::wstring> arguments = {command};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.push_back(L"--json");
    arguments.push_back(folder.file(command + L".json"));
    const HostProgram::Outcome outcome = HostProgram::run(arguments);
    EXPECT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "Result: PASS")) << outcome.out;
    return JsonValue::parse(ScratchFolder::read(folder.file(command + L".json")));
}

TEST(SorvaneDiagDigitalTest, ClearQAMFindsTheClearChannelAndReportsItsStreamHealth)
{
    ScratchFolder folder(L"sorvane-diag-digital");
    const JsonValue report =
        scan(folder, L"clearqam",
             {L"-d", L"Lab ATSC QAM Tuner", L"--set", L"DigitalStartChannel=3", L"--set", L"DigitalEndChannel=4"});
    EXPECT_EQ("clearqam", report["command"].text());
    EXPECT_EQ("Lab ATSC QAM Tuner", report["device"]["name"].text());
    ASSERT_TRUE(report.has("streamHealth"));
    const JsonValue &health = report["streamHealth"];
    EXPECT_EQ(100.0, health["quality"].number());
    EXPECT_GT(health["packets"].number(), 0.0);
    EXPECT_EQ(0.0, health["syncLosses"].number());
    EXPECT_EQ(0.0, health["continuityErrors"].number());
    EXPECT_EQ(0.0, health["pidErrors"].number());
}

TEST(SorvaneDiagDigitalTest, AtscDvbtAndOcurFindTheirChannels)
{
    ScratchFolder folder(L"sorvane-diag-digital");
    const JsonValue atsc =
        scan(folder, L"atsc",
             {L"-d", L"Lab ATSC QAM Tuner", L"--set", L"DigitalStartChannel=8", L"--set", L"DigitalEndChannel=8"});
    EXPECT_FALSE(atsc.has("streamHealth"));

    // Germany's ninth channel is UHF 21, 474000 kHz, on the air in the lab.
    const JsonValue dvbt = scan(folder, L"dvbt",
                                {L"-d", L"Lab DVB-T Tuner", L"--set", L"Country=DE", L"--set", L"DigitalStartChannel=9",
                                 L"--set", L"DigitalEndChannel=9"});
    EXPECT_TRUE(dvbt.has("streamHealth"));

    scan(folder, L"ocur",
         {L"-d", L"Lab OpenCable Tuner", L"--set", L"UseMinorChannelTechnique=true", L"--set", L"DigitalStartChannel=2",
          L"--set", L"DigitalEndChannel=2"});
}

TEST(SorvaneDiagDigitalTest, AnAnalogCardNamedForADigitalScanIsNotSupported)
{
    ScratchFolder folder(L"sorvane-diag-digital");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"dvbt", L"-d", L"Lab Analog TV Tuner", L"--json", folder.file(L"analog.json")});
    EXPECT_EQ(kNotSupported, outcome.exitCode) << outcome.out << outcome.err;
    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"analog.json")));
    ASSERT_EQ(1u, report["events"].size());
    EXPECT_EQ("WarningHardwareDoesNotSupportDigitalTVCapture", report["events"][0]["key"].text());
}

} // namespace
