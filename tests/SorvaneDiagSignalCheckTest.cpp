// A tuner whose own signal check fails (an analog card's SignalPresent, a digital card's
// statistics): the library counts every failed check as no signal and its event asks about
// the cabling; the host says that the tuner did not answer. And a DTMB card that only its
// capture filter names as one.
#include "ReportedRun.h"

#include <lab/ScopedLabDevices.h>

#include <gtest/gtest.h>

#include <memory>

using sorvane::test::contains;
using sorvane::test::ReportedRun;
using sorvane::test::ScratchFolder;

namespace {

const DWORD kNoSignal = 11;
const wchar_t kBroken[] = L"Lab Tuner Without Answer";
const wchar_t kUnreadable[] = L"Lab ATSC Without Statistics";
const wchar_t kTerrestrial[] = L"Lab Terrestrial Card";

class SorvaneDiagSignalCheckTest : public ::testing::Test {
protected:
    // The cards are prefix-wide (registry monikers): this program runs alone.
    static void SetUpTestSuite()
    {
        s_cards.reset(new lab::ScopedLabDevices(
            std::wstring(L"[analog-tuner]\nname = ") + kBroken +
            L"\npath = \\\\?\\pci#ven_14f1&dev_8800&subsys_88019999&rev_05#4&77&0&2010#"
            L"{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
            L"format = RGB24 320x240 30\ntuner-modes = tv, fm\nchannel-range = 2-69\n"
            L"channels = 3:antenna\nfm-stations = 88.1\n"
            L"crossbar-inputs = tuner, composite\ncrossbar-outputs = video-decoder\n"
            L"fault.SignalPresent = 0x80004005\n" +
            // An ATSC card whose topology nodes fail to say whether the signal is locked.
            L"[bda-tuner]\nname = " + kUnreadable +
            L"\npath = \\\\?\\pci#ven_1131&dev_7160&subsys_99991822&rev_03#4&78&0&0010#"
            L"{71985f48-1ca1-11d3-9cc8-00c04f7971e0}\\{3c1e9d5a-0b7f-4e2a-9f61-7a0c2b4d8e99}\n"
            L"networks = atsc\nstatistics = nodes\nfault.get_SignalLocked = 0x80004005\n"
            L"[bda-receiver]\nname = Lab Receiver Without Statistics\n"
            L"path = \\\\?\\pci#ven_1131&dev_7160&subsys_99991822&rev_03#4&78&0&0010#"
            L"{fd0a5af4-b41d-11d2-9c95-00c04f7971e0}\\{3c1e9d5b-0b7f-4e2a-9f61-7a0c2b4d8e99}\n"
            L"bitrate = 4000000\npackets-per-sample = 64\n" +
            // A DTMB card whose tuner filter's name does not say so; its capture filter's does.
            L"[bda-tuner]\nname = " + kTerrestrial +
            L"\npath = \\\\?\\pci#ven_1131&dev_7160&subsys_99981822&rev_03#4&79&0&0010#"
            L"{71985f48-1ca1-11d3-9cc8-00c04f7971e0}\\{3c1e9d5a-0b7f-4e2a-9f61-7a0c2b4d8e98}\n"
            L"networks = dtmb\nstatistics = nodes\n"
            L"[bda-receiver]\nname = Lab DMB-TH Capture\n"
            L"path = \\\\?\\pci#ven_1131&dev_7160&subsys_99981822&rev_03#4&79&0&0010#"
            L"{fd0a5af4-b41d-11d2-9c95-00c04f7971e0}\\{3c1e9d5b-0b7f-4e2a-9f61-7a0c2b4d8e98}\n"
            L"bitrate = 4000000\npackets-per-sample = 64\n"));
    }
    static void TearDownTestSuite() { s_cards.reset(); }

    static std::unique_ptr<lab::ScopedLabDevices> s_cards;
};

std::unique_ptr<lab::ScopedLabDevices> SorvaneDiagSignalCheckTest::s_cards;

} // namespace

TEST_F(SorvaneDiagSignalCheckTest, AFailedSignalCheckIsNotShownAsACablingProblem)
{
    // Channel 3 carries a signal on the antenna: only the failing check hides it. Two passes of
    // one channel on one input: two failed checks.
    ScratchFolder folder(L"sorvane-diag-signal-check");
    const std::wstring log = folder.file(L"library.log");
    const ReportedRun tv =
        ReportedRun::of({L"tv", L"-d", kBroken, L"--set", L"TVStartChannel=3", L"--set", L"TVEndChannel=3", L"--set",
                         L"SignalType=ANTENNA", L"--log", log, L"--log-level", L"warning"},
                        folder);
    EXPECT_EQ(kNoSignal, tv.outcome.exitCode) << tv.outcome.out << tv.outcome.err;
    EXPECT_EQ("ErrorNoSignalWithTip", tv.report["events"][0]["key"].text());
    EXPECT_TRUE(contains(tv.outcome.out, "What happened: the tuner's own signal check failed 2 times (SignalPresent "
                                         "answered 0x80004005"))
        << tv.outcome.out;
    EXPECT_TRUE(contains(tv.outcome.out, "whatever the cabling")) << tv.outcome.out;
    EXPECT_TRUE(tv.hasMessage("the tuner's own signal check failed"));
    // The host read the library's detail lines; the log file kept the level asked for.
    const std::string written = ScratchFolder::read(log);
    EXPECT_EQ(std::string::npos, written.find("SignalPresent returned")) << written;
    EXPECT_EQ(std::string::npos, written.find("DETAIL")) << written;

    const ReportedRun fm = ReportedRun::of(
        {L"fm", L"-d", kBroken, L"--set", L"FMRadioStartChannel=88.1", L"--set", L"FMRadioEndChannel=88.1"}, folder);
    EXPECT_EQ(kNoSignal, fm.outcome.exitCode) << fm.outcome.out << fm.outcome.err;
    EXPECT_TRUE(contains(fm.outcome.out, "What happened: the tuner's own signal check failed once")) << fm.outcome.out;
}

TEST_F(SorvaneDiagSignalCheckTest, UnreadableSignalStatisticsAreNotShownAsNoSignal)
{
    // Channel 8 is on the air in the lab: only the failed reads hide it.
    ScratchFolder folder(L"sorvane-diag-signal-check");
    const ReportedRun atsc = ReportedRun::of(
        {L"atsc", L"-d", kUnreadable, L"--set", L"DigitalStartChannel=8", L"--set", L"DigitalEndChannel=8"}, folder);
    EXPECT_EQ(kNoSignal, atsc.outcome.exitCode) << atsc.outcome.out << atsc.outcome.err;
    EXPECT_TRUE(contains(atsc.outcome.out, "What happened: the tuner's signal statistics could not be read"))
        << atsc.outcome.out;
    EXPECT_TRUE(contains(atsc.outcome.out, "(\"Topo sig lock failed: ")) << atsc.outcome.out;
    EXPECT_TRUE(atsc.hasMessage("whatever the antenna or cable"));
}

TEST_F(SorvaneDiagSignalCheckTest, AWorkingCheckWithoutSignalNeedsNoExplanation)
{
    ScratchFolder folder(L"sorvane-diag-signal-check");
    const ReportedRun tv = ReportedRun::of({L"tv", L"-d", L"Lab Analog TV Tuner", L"--set", L"TVStartChannel=2",
                                            L"--set", L"TVEndChannel=2", L"--set", L"SignalType=ANTENNA"},
                                           folder);
    EXPECT_EQ(kNoSignal, tv.outcome.exitCode) << tv.outcome.out << tv.outcome.err;
    EXPECT_TRUE(contains(tv.outcome.out, "Check that the antenna or cable is connected.")) << tv.outcome.out;
    EXPECT_FALSE(contains(tv.outcome.out, "What happened")) << tv.outcome.out;
}

TEST_F(SorvaneDiagSignalCheckTest, ACardWhoseCaptureFilterIsDTMBScansTheDTMBPlan)
{
    // Neither the device's name nor its tuner filter's says DTMB; the capture filter's does.
    ScratchFolder folder(L"sorvane-diag-signal-check");
    const std::wstring log = folder.file(L"library.log");
    const ReportedRun dvbt = ReportedRun::of({L"dvbt", L"-d", kTerrestrial, L"--set", L"DigitalStartChannel=24",
                                              L"--set", L"DigitalEndChannel=24", L"--log", log},
                                             folder);
    EXPECT_EQ(0u, dvbt.outcome.exitCode) << dvbt.outcome.out << dvbt.outcome.err;
    EXPECT_TRUE(contains(dvbt.outcome.out, "Signal found on channel 24: DTMB channel DS-24, 562.0 MHz."))
        << dvbt.outcome.out;
    const std::string written = ScratchFolder::read(log);
    EXPECT_NE(std::string::npos, written.find("***filterIsDTMB()--filter name = Lab DMB-TH Capture")) << written;
    EXPECT_NE(std::string::npos, written.find("DTMB tuner detected.  Setting channel range: 13-56")) << written;
}
