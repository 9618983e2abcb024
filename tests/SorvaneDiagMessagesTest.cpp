// What the host says when a test does not pass: what happened, matching the result and the
// event, every BADPARAMS with its parameters and range, and where a scan found its signal.
#include "ReportedRun.h"

#include <gtest/gtest.h>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::ReportedRun;
using sorvane::test::ScratchFolder;

namespace {

const DWORD kUsageError = 2;
const DWORD kFail = 10;
const DWORD kNoDevice = 12;
const DWORD kBadParams = 15;
const DWORD kNotSupported = 18;
const wchar_t *const kTuner = L"Lab Analog TV Tuner";

ReportedRun runWithReport(const std::vector<std::wstring> &arguments)
{
    return ReportedRun::of(arguments, ScratchFolder(L"sorvane-diag-messages"));
}

} // namespace

TEST(SorvaneDiagMessagesTest, CaptureFailuresWithOneEventSayWhichFailureItWas)
{
    // The library posts "did not deliver the expected frames" for both; its error lines differ.
    ScratchFolder folder(L"sorvane-diag-messages");
    const ReportedRun start = runWithReport({L"webcam", L"-d", L"Lab Webcam Start Failure", L"-o", folder.file(L"a")});
    EXPECT_EQ(kFail, start.outcome.exitCode) << start.outcome.out << start.outcome.err;
    EXPECT_TRUE(contains(start.outcome.out, "the device refused to start streaming (IMediaControl::Run() failed"))
        << start.outcome.out;
    EXPECT_EQ("ErrorCapturingFrames", start.report["events"][0]["key"].text());
    EXPECT_TRUE(start.hasMessage("refused to start streaming"));

    const ReportedRun format = runWithReport({L"webcam", L"-d", L"Lab Webcam Picky", L"-o", folder.file(L"b")});
    EXPECT_EQ(kFail, format.outcome.exitCode) << format.outcome.out << format.outcome.err;
    EXPECT_TRUE(
        contains(format.outcome.out, "the device refused the video format the library asked for (SetFormat failed"))
        << format.outcome.out;
    EXPECT_FALSE(contains(format.outcome.out, "refused to start streaming")) << format.outcome.out;
}

TEST(SorvaneDiagMessagesTest, AnUnpluggedCameraIsExplainedInTheTermsOfItsResult)
{
    // Its moniker no longer binds, so its record has no capabilities: no device to capture from.
    ScratchFolder folder(L"sorvane-diag-messages");
    for (const wchar_t *command : {L"webcam", L"preview"}) {
        const ReportedRun run = runWithReport({command, L"-d", L"Lab Webcam Unplugged"});
        EXPECT_EQ(kNoDevice, run.outcome.exitCode) << run.outcome.out << run.outcome.err;
        EXPECT_EQ("NODEVICE", run.report["result"].text());
        EXPECT_TRUE(contains(run.outcome.out, "Lab Webcam Unplugged is listed, but Windows could not open it as a "
                                              "video capture device: it may have been unplugged"))
            << run.outcome.out;
    }
}

TEST(SorvaneDiagMessagesTest, ATunerScanOnADeviceWithoutThatTunerSaysSo)
{
    const ReportedRun fm = runWithReport({L"fm", L"-d", L"Lab Webcam HD"});
    EXPECT_EQ(kNotSupported, fm.outcome.exitCode) << fm.outcome.out << fm.outcome.err;
    EXPECT_TRUE(contains(fm.outcome.out, "Lab Webcam HD has no FM radio tuner")) << fm.outcome.out;
    EXPECT_FALSE(contains(fm.outcome.out, "analog TV")) << fm.outcome.out;
    EXPECT_EQ("NOTSUPPORTED", fm.report["result"].text());

    const ReportedRun tv = runWithReport({L"tv", L"-d", L"Lab Analog Capture Card"});
    EXPECT_EQ(kNotSupported, tv.outcome.exitCode);
    EXPECT_TRUE(contains(tv.outcome.out, "Lab Analog Capture Card has no TV tuner")) << tv.outcome.out;
}

TEST(SorvaneDiagMessagesTest, EveryBadRangeNamesItsParametersAndWhatIsAllowed)
{
    const ReportedRun reversedTv =
        runWithReport({L"tv", L"-d", kTuner, L"--set", L"TVStartChannel=10", L"--set", L"TVEndChannel=5"});
    EXPECT_EQ(kBadParams, reversedTv.outcome.exitCode) << reversedTv.outcome.out;
    EXPECT_TRUE(contains(reversedTv.outcome.out, "TVEndChannel (5) is below TVStartChannel (10)"))
        << reversedTv.outcome.out;
    EXPECT_EQ("BADPARAMS", reversedTv.report["result"].text());
    EXPECT_TRUE(reversedTv.hasMessage("TVEndChannel (5) is below TVStartChannel (10)"));

    const ReportedRun outOfBand =
        runWithReport({L"fm", L"-d", kTuner, L"--set", L"FMRadioStartChannel=120", L"--set", L"FMRadioEndChannel=130"});
    EXPECT_EQ(kBadParams, outOfBand.outcome.exitCode) << outOfBand.outcome.out;
    EXPECT_TRUE(contains(outOfBand.outcome.out,
                         "FMRadioStartChannel (120.0 MHz) is outside the FM band: the FM band is 76.0 to 108.0 MHz."))
        << outOfBand.outcome.out;

    // The library would sweep 100 MHz alone; the host refuses instead.
    const ReportedRun reversedFm =
        runWithReport({L"fm", L"-d", kTuner, L"--set", L"FMRadioStartChannel=100", L"--set", L"FMRadioEndChannel=90"});
    EXPECT_EQ(kBadParams, reversedFm.outcome.exitCode) << reversedFm.outcome.out;
    EXPECT_TRUE(
        contains(reversedFm.outcome.out, "FMRadioEndChannel (90.0 MHz) is below FMRadioStartChannel (100.0 MHz)"))
        << reversedFm.outcome.out;
    EXPECT_EQ(0u, reversedFm.report["progress"].size());
}

// Each device a name fits comes with the index that chooses it: two cameras of one model share
// their name, so only the index tells them apart.
TEST(SorvaneDiagMessagesTest, AnAmbiguousDeviceIsACommandLineMistakeNamingTheMatchesAndTheirIndices)
{
    const HostProgram::Outcome listed = HostProgram::run({L"list", L"--json", L"-"});
    const JsonValue devices = JsonValue::parse(listed.out)["devices"];
    std::vector<std::string> index;
    std::string rgb24;
    for (size_t i = 0; i < devices.size(); ++i) {
        if (devices[i]["name"].text() == "Lab Twin Camera")
            index.push_back(std::to_string(i));
        if (devices[i]["name"].text() == "Lab Webcam RGB24")
            rgb24 = std::to_string(i);
    }
    ASSERT_EQ(2u, index.size()) << listed.out;

    const HostProgram::Outcome part = HostProgram::run({L"webcam", L"-d", L"Lab Webcam RGB"});
    EXPECT_EQ(kUsageError, part.exitCode) << part.out << part.err;
    EXPECT_TRUE(
        contains(part.err, "--device \"Lab Webcam RGB\" fits several devices (" + rgb24 + ": Lab Webcam RGB24, "))
        << part.err;
    EXPECT_TRUE(contains(part.err, "); give more of the name, or the index of one (--device " + rgb24 + ")."))
        << part.err;

    for (const wchar_t *twin : {L"Lab Twin", L"lab twin camera"}) {
        const HostProgram::Outcome outcome = HostProgram::run({L"webcam", L"-d", twin});
        EXPECT_EQ(kUsageError, outcome.exitCode) << outcome.out << outcome.err;
        EXPECT_TRUE(contains(outcome.err, "fits several devices (" + index[0] + ": Lab Twin Camera, " + index[1] +
                                              ": Lab Twin Camera); they share their name, so choose one by "
                                              "its index (--device " +
                                              index[0] + ")."))
            << outcome.err;
    }
}

TEST(SorvaneDiagMessagesTest, AScanThatPassesSaysWhereTheSignalWas)
{
    const ReportedRun tv =
        runWithReport({L"tv", L"-d", kTuner, L"--set", L"TVStartChannel=2", L"--set", L"TVEndChannel=4"});
    EXPECT_EQ(0u, tv.outcome.exitCode) << tv.outcome.out;
    EXPECT_TRUE(contains(tv.outcome.out, "Signal found on channel 3.")) << tv.outcome.out;
    EXPECT_EQ("3", tv.report["signalFound"]["channel"].text());

    const ReportedRun fm = runWithReport(
        {L"fm", L"-d", kTuner, L"--set", L"FMRadioStartChannel=87.9", L"--set", L"FMRadioEndChannel=88.3"});
    EXPECT_EQ(0u, fm.outcome.exitCode) << fm.outcome.out;
    EXPECT_TRUE(contains(fm.outcome.out, "Station found at 88.1 MHz.")) << fm.outcome.out;
    EXPECT_EQ("88.1", fm.report["signalFound"]["channel"].text());
}

TEST(SorvaneDiagMessagesTest, OneFrameIsOneImage)
{
    ScratchFolder folder(L"sorvane-diag-messages");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"webcam", L"-d", L"Lab Webcam UYVY", L"-n", L"1", L"-o", folder.file(L"one")});
    EXPECT_EQ(0u, outcome.exitCode) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "Got 1 frame of ")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "Saved 1 image and a contact sheet in ")) << outcome.out;
}
