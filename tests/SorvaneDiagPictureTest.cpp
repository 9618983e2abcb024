// The host's verdict on the picture of a webcam capture, a preview and a recording, against
// lab cameras that deliver each kind of bad picture: the line a person reads, the report's
// "picture" member, and --strict turning a bad picture into FAIL.
#include "ReportedRun.h"

#include <lab/ScopedLabDevices.h>

#include <gtest/gtest.h>

#include <memory>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::ReportedRun;
using sorvane::test::ScratchFolder;

namespace {

const DWORD kFail = 10;

const wchar_t kFrozen[] = L"Lab Picture Frozen";
const wchar_t kFlat[] = L"Lab Picture Flat";
const wchar_t kNoise[] = L"Lab Picture Noise";
// Its crossbar starts on the composite input, where nothing is plugged in: black.
const wchar_t kNoInput[] = L"Lab Analog Capture Card";
const wchar_t kTuner[] = L"Lab Analog TV Tuner";

std::wstring camera(const std::wstring &name, unsigned product, const std::wstring &fault)
{
    wchar_t path[200] = {};
    swprintf(path, 200,
             L"\\\\?\\usb#vid_5ab0&pid_%04x&mi_00#9&77&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global", product);
    return L"[webcam]\nname = " + name + L"\npath = " + path + L"\nformat = YUY2 320x240 30\nprivacy = none\n" + fault +
           L" = yes\n";
}

class SorvaneDiagPictureTest : public ::testing::Test {
protected:
    // The cameras are prefix-wide (registry monikers): this program runs alone.
    static void SetUpTestSuite()
    {
        s_cameras.reset(new lab::ScopedLabDevices(camera(kFrozen, 1, L"fault.frozen") +
                                                  camera(kFlat, 2, L"fault.flat") +
                                                  camera(kNoise, 3, L"fault.garbage")));
    }
    static void TearDownTestSuite() { s_cameras.reset(); }

    static ReportedRun capture(const std::wstring &device, bool strict, const ScratchFolder &folder)
    {
        std::vector<std::wstring> arguments = {L"webcam", L"--device",           device, L"--frames", L"4",
                                               L"--out",  folder.file(L"frames")};
        if (strict)
            arguments.push_back(L"--strict");
        return ReportedRun::of(arguments, folder);
    }

    static std::unique_ptr<lab::ScopedLabDevices> s_cameras;
};

std::unique_ptr<lab::ScopedLabDevices> SorvaneDiagPictureTest::s_cameras;

} // namespace

TEST_F(SorvaneDiagPictureTest, AGoodPictureIsSaidAndPassesEvenWhenStrict)
{
    ScratchFolder folder(L"sorvane-diag-picture");
    const ReportedRun good = capture(L"Lab Webcam YUY2", true, folder);
    ASSERT_EQ(0u, good.outcome.exitCode) << good.outcome.out << good.outcome.err;
    EXPECT_TRUE(contains(good.outcome.out, "Picture: good: ")) << good.outcome.out;
    const JsonValue &picture = good.report["picture"];
    EXPECT_EQ("good", picture["verdict"].text());
    EXPECT_EQ("capture", picture["source"].text());
    EXPECT_EQ(4.0, picture["frames"].number());
    EXPECT_EQ(0.0, picture["identicalPairs"].number());
    EXPECT_GT(picture["change"].number(), 0.0);
    EXPECT_GT(picture["structure"].number(), 0.5);
    EXPECT_TRUE(picture["strict"].flag());

    for (const wchar_t *command : {L"webcam", L"preview", L"record"}) {
        const HostProgram::Outcome help = HostProgram::run({command, L"--help"});
        EXPECT_TRUE(contains(help.out, "--strict            a bad picture (black, flat, noise, frozen) fails the test"))
            << help.out;
    }
    // Commands that judge no picture refuse the option.
    EXPECT_EQ(2u, HostProgram::run({L"tv", L"--strict"}).exitCode);
}

TEST_F(SorvaneDiagPictureTest, EachBadPictureIsNamedBesideAPassingResult)
{
    const struct {
        const wchar_t *device;
        const char *verdict;
    } kCases[] = {{kFrozen, "frozen"}, {kFlat, "flat"}, {kNoise, "noise"}, {kNoInput, "black"}};
    for (const auto &bad : kCases) {
        ScratchFolder folder(L"sorvane-diag-picture");
        const ReportedRun lenient = capture(bad.device, false, folder);
        EXPECT_EQ(0u, lenient.outcome.exitCode) << bad.verdict << lenient.outcome.out << lenient.outcome.err;
        EXPECT_TRUE(contains(lenient.outcome.out, std::string("Picture: ") + bad.verdict + ": "))
            << lenient.outcome.out;
        EXPECT_TRUE(contains(lenient.outcome.out, "Result: PASS")) << lenient.outcome.out;
        EXPECT_EQ(bad.verdict, lenient.report["picture"]["verdict"].text());
        EXPECT_EQ("PASS", lenient.report["result"].text());
    }
}

TEST_F(SorvaneDiagPictureTest, StrictTurnsABadPictureIntoFail)
{
    ScratchFolder folder(L"sorvane-diag-picture");
    const ReportedRun frozen = capture(kFrozen, true, folder);
    EXPECT_EQ(kFail, frozen.outcome.exitCode) << frozen.outcome.out << frozen.outcome.err;
    EXPECT_TRUE(contains(frozen.outcome.out, "--strict: a frozen picture fails the test.")) << frozen.outcome.out;
    EXPECT_EQ("FAIL", frozen.report["result"].text());
    EXPECT_EQ(3.0, frozen.report["picture"]["identicalPairs"].number());
    EXPECT_EQ(0.0, frozen.report["picture"]["change"].number());
}

TEST_F(SorvaneDiagPictureTest, APreviewIsJudgedOnASampleOfFrames)
{
    ScratchFolder folder(L"sorvane-diag-picture");
    const ReportedRun preview = ReportedRun::of({L"preview", L"--device", kNoInput, L"--strict"}, folder);
    EXPECT_EQ(kFail, preview.outcome.exitCode) << preview.outcome.out << preview.outcome.err;
    EXPECT_TRUE(contains(preview.outcome.out, "Capturing 5 frames to judge the picture...\nPicture: black: "))
        << preview.outcome.out;
    EXPECT_EQ("sample", preview.report["picture"]["source"].text());
    EXPECT_EQ(5.0, preview.report["picture"]["frames"].number());

    // A tuner's sample is a short recording, set up as the preview was: its tuner input on a
    // channel without signal, snow. The sample's file is not left behind.
    const ReportedRun tuner = ReportedRun::of({L"preview", L"--device", kTuner, L"--strict"}, folder);
    EXPECT_EQ(kFail, tuner.outcome.exitCode) << tuner.outcome.out << tuner.outcome.err;
    EXPECT_TRUE(contains(tuner.outcome.out, "Recording a few seconds to judge the picture...\nPicture: noise: "))
        << tuner.outcome.out;
    EXPECT_EQ("sample", tuner.report["picture"]["source"].text());
    EXPECT_EQ(0u, tuner.report["files"].size());
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    WIN32_FIND_DATAW found;
    const HANDLE left = FindFirstFileW((std::wstring(temp) + L"sorvane-diag-sample-*.avi").c_str(), &found);
    EXPECT_EQ(INVALID_HANDLE_VALUE, left) << "sample recording left in the temporary folder";
    if (left != INVALID_HANDLE_VALUE)
        FindClose(left);
}

TEST_F(SorvaneDiagPictureTest, ARecordingIsJudgedOnTheFramesOfItsFile)
{
    ScratchFolder folder(L"sorvane-diag-picture");
    const std::wstring name = L"sorvane-diag-picture-" + std::to_wstring(GetCurrentProcessId());
    const ReportedRun flat = ReportedRun::of({L"record", L"--device", kFlat, L"--name", name}, folder);
    EXPECT_EQ(0u, flat.outcome.exitCode) << flat.outcome.out << flat.outcome.err;
    EXPECT_TRUE(contains(flat.outcome.out, "Picture: flat: ")) << flat.outcome.out;
    EXPECT_EQ("flat", flat.report["picture"]["verdict"].text());
    EXPECT_EQ("recording", flat.report["picture"]["source"].text());
    EXPECT_FALSE(contains(flat.outcome.out, "frames to judge the picture")) << flat.outcome.out;

    // The tuner records its tuner input on a channel without signal: snow.
    const ReportedRun snow = ReportedRun::of({L"record", L"--device", kTuner, L"--name", name, L"--strict"}, folder);
    EXPECT_EQ(kFail, snow.outcome.exitCode) << snow.outcome.out << snow.outcome.err;
    EXPECT_TRUE(contains(snow.outcome.out, "Picture: noise: ")) << snow.outcome.out;
    EXPECT_TRUE(contains(snow.outcome.out, "--strict: a noise picture fails the test.")) << snow.outcome.out;
    EXPECT_EQ("recording", snow.report["picture"]["source"].text());
    EXPECT_GT(snow.report["picture"]["frames"].number(), 1.0);

    const ReportedRun good =
        ReportedRun::of({L"record", L"--device", L"Lab Webcam RGB24", L"--name", name, L"--strict"}, folder);
    EXPECT_EQ(0u, good.outcome.exitCode) << good.outcome.out << good.outcome.err;
    EXPECT_EQ("good", good.report["picture"]["verdict"].text());
    EXPECT_EQ(0.0, good.report["picture"]["identicalPairs"].number());

    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    DeleteFileW((std::wstring(temp) + name + L".avi").c_str());
}
