// Listing RealSense cameras against the lab's stand-in runtime, reached through the lab's
// dispatch keys ("LocalRuntime" "." beside libSorvane.dll): the records of every capture
// implementation, the implementations and queries that fail, the array emptied first, the
// session that cannot be made, the library in another folder, and Windows 8.
#include "DepthProbe.h"
#include "FrameworkTest.h"
#include "HostProgram.h"
#include "ProgramCopies.h"
#include "ScratchFolder.h"
#include "StandInRuntime.h"

#include <RealSenseEnumeration.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using sorvane::test::binFolder;
using sorvane::test::contains;
using sorvane::test::DepthProbe;
using sorvane::test::narrow;
using sorvane::test::StandInRuntime;

typedef kel::Array<PXCCapture::DeviceInfo> DeviceInfos;

const char kTwoCaptures[] = "[realsense-capture]\n"
                            "name = Front\n"
                            "[realsense-camera]\n"
                            "name = Cam F200\n"
                            "serial = F-1\n"
                            "did = \\\\?\\usb#vid_8086&pid_0a66#1#{e5323777}\\global\n"
                            "firmware = 2.60.0.1\n"
                            "location = 35.5, 2\n"
                            "model = F200\n"
                            "orientation = user-facing\n"
                            "streams = color, depth, ir\n"
                            "connection = integrated\n"
                            "[realsense-camera]\n"
                            "name = Cam SR300\n"
                            "model = SR300\n"
                            "rotation = 90\n"
                            "connection = peripheral\n"
                            "[realsense-capture]\n"
                            "name = World\n"
                            "[realsense-camera]\n"
                            "name = Cam R200\n"
                            "serial = R-3\n"
                            "firmware = 2.0.71.28\n"
                            "location = -10, 0.25\n"
                            "model = R200\n"
                            "orientation = world-facing\n"
                            "streams = color, depth, left, right, aux-color\n"
                            "rotation = 270\n";

// A camera record as the vendor's published interface defines its fields, with the values the
// stand-in runtime was described with above: numbers as published, not as the library names them.
struct ExpectedCamera {
    const wchar_t *name;
    const wchar_t *serial;
    const wchar_t *did;
    int firmware[4];
    float location[2];
    int model;       // F200 0x0020000E, SR300 0x00200010, R200 0x0020000F
    int orientation; // user-facing 1, world-facing 2
    int streams;     // color 1, depth 2, ir 4, left 8, right 16, aux-color 32
    int didx;
    int duid;
    int rotation;       // degrees
    int connectionType; // unknown 0, integrated 1, peripheral 2
};

const ExpectedCamera kTwoCapturesCameras[] = {
    {L"Cam F200",
     L"F-1",
     L"\\\\?\\usb#vid_8086&pid_0a66#1#{e5323777}\\global",
     {2, 60, 0, 1},
     {35.5f, 2.0f},
     0x0020000E,
     1,
     1 | 2 | 4,
     0,
     0,
     0,
     1},
    {L"Cam SR300", L"", L"", {0, 0, 0, 0}, {0.0f, 0.0f}, 0x00200010, 0, 0, 1, 1, 90, 2},
    {L"Cam R200", L"R-3", L"", {2, 0, 71, 28}, {-10.0f, 0.25f}, 0x0020000F, 2, 1 | 2 | 8 | 16 | 32, 0, 2, 270, 0}};

void expectCamera(const ExpectedCamera &expected, const PXCCapture::DeviceInfo &info)
{
    SCOPED_TRACE(testing::Message() << "camera " << std::wstring(expected.name));
    EXPECT_EQ(std::wstring(expected.name), std::wstring(info.name));
    EXPECT_EQ(std::wstring(expected.serial), std::wstring(info.serial));
    EXPECT_EQ(std::wstring(expected.did), std::wstring(info.did));
    EXPECT_EQ(std::vector<int>(expected.firmware, expected.firmware + 4),
              std::vector<int>(info.firmware, info.firmware + 4));
    EXPECT_FLOAT_EQ(expected.location[0], info.location.x);
    EXPECT_FLOAT_EQ(expected.location[1], info.location.y);
    EXPECT_EQ(expected.model, static_cast<int>(info.model));
    EXPECT_EQ(expected.orientation, static_cast<int>(info.orientation));
    EXPECT_EQ(expected.streams, static_cast<int>(info.streams));
    EXPECT_EQ(expected.didx, info.didx);
    EXPECT_EQ(expected.duid, info.duid);
    EXPECT_EQ(expected.rotation, static_cast<int>(info.rotation));
    EXPECT_EQ(expected.connectionType, static_cast<int>(info.connectionType));
    EXPECT_EQ(std::vector<int>(11, 0), std::vector<int>(info.reserved, info.reserved + 11));
}

std::string name(const PXCCapture::DeviceInfo &info)
{
    return narrow(std::wstring(info.name));
}

std::vector<std::string> names(const DeviceInfos &devices)
{
    std::vector<std::string> result;
    for (int i = 0; i < devices.size(); ++i)
        result.push_back(name(devices[i]));
    return result;
}

std::string lower(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string joined(const std::vector<std::string> &lines)
{
    std::string text;
    for (const std::string &line : lines)
        text += line + "\n";
    return text;
}

class RealSenseEnumerationTest : public sorvane::test::FrameworkTest {
protected:
    // Log lines of the "libSorvane" logger that contain `text`.
    size_t logged(const char *text)
    {
        size_t count = 0;
        for (const auto &line : log().find(kel::String(text))) {
            if (line.category == kel::String("libSorvane"))
                ++count;
        }
        return count;
    }

    StandInRuntime m_runtime;
};

} // namespace

TEST_F(RealSenseEnumerationTest, TwoImplementationsGiveEveryRecordInOrderAndAreReleased)
{
    m_runtime.describe(kTwoCaptures);
    DeviceInfos devices;
    EXPECT_EQ(3u, sorvane::enumIntelRealSenseDevice(devices));
    ASSERT_EQ(3, devices.size());
    for (int i = 0; i < devices.size(); ++i)
        expectCamera(kTwoCapturesCameras[i], devices[i]);

    // "." names the folder of libSorvane.dll; the local runtime is asked for. Implementations are
    // asked for with the video-capture template (sensor group 4, subgroup 2) and created by their
    // description alone (iuid 0) as PXCCapture (0x83F72A50).
    const std::string module = lower(narrow(binFolder()) + "libpxcsession.dll");
    const std::vector<std::string> journal = m_runtime.journal();
    ASSERT_FALSE(journal.empty());
    EXPECT_EQ("pxcsession_createext 4 0 0 0 1 0 " + module, lower(journal[0]));
    EXPECT_EQ((std::vector<std::string>{"Session created", "QueryImpl 0 group 4 subgroup 2: Front",
                                        "CreateImpl Front iuid 0 cuid 0x83F72A50", "QueryDeviceInfo Front 0 Cam F200",
                                        "QueryDeviceInfo Front 1 Cam SR300", "QueryDeviceInfo Front 2 failed -3",
                                        "Release capture Front", "QueryImpl 1 group 4 subgroup 2: World",
                                        "CreateImpl World iuid 0 cuid 0x83F72A50", "QueryDeviceInfo World 0 Cam R200",
                                        "QueryDeviceInfo World 1 failed -3", "Release capture World",
                                        "QueryImpl 2 group 4 subgroup 2: none", "Release session"}),
              std::vector<std::string>(journal.begin() + 1, journal.end()));
    EXPECT_EQ(0u, logged("No sessions instantiable."));
}

TEST_F(RealSenseEnumerationTest, TheArrayPassedInIsEmptiedFirst)
{
    m_runtime.describe("[realsense-capture]\nname = Only\n[realsense-camera]\nname = Fresh\n");
    DeviceInfos devices;
    PXCCapture::DeviceInfo stale = {};
    wcscpy(stale.name, L"Stale");
    devices.add(stale);
    devices.add(stale);
    EXPECT_EQ(1u, sorvane::enumIntelRealSenseDevice(devices));
    EXPECT_EQ((std::vector<std::string>{"Fresh"}), names(devices));

    // With no session at all the old records are gone just the same.
    m_runtime.describe("[realsense-runtime]\nfault.session = -503\n");
    EXPECT_EQ(0u, sorvane::enumIntelRealSenseDevice(devices));
    EXPECT_EQ(0, devices.size());
}

TEST_F(RealSenseEnumerationTest, AnImplementationThatFailsToCreateIsSkippedWithItsLogLine)
{
    m_runtime.describe(std::string("[realsense-capture]\nname = Broken\nfault.create = -201\n"
                                   "[realsense-camera]\nname = Unseen\n") +
                       kTwoCaptures);
    DeviceInfos devices;
    EXPECT_EQ(3u, sorvane::enumIntelRealSenseDevice(devices));
    EXPECT_EQ((std::vector<std::string>{"Cam F200", "Cam SR300", "Cam R200"}), names(devices));
    EXPECT_EQ(1u, logged("57 Unable to create a PXCCapture video instance."));
    const std::string journal = joined(m_runtime.journal());
    EXPECT_TRUE(contains(journal, "QueryImpl 0 group 4 subgroup 2: Broken\n"
                                  "CreateImpl Broken iuid 0 cuid 0x83F72A50 failed -201\n"
                                  "QueryImpl 1 group 4 subgroup 2: Front\n"))
        << journal;
    EXPECT_FALSE(contains(journal, "QueryDeviceInfo Broken")) << journal;
    EXPECT_TRUE(contains(journal, "QueryImpl 3 group 4 subgroup 2: none\nRelease session\n")) << journal;
}

TEST_F(RealSenseEnumerationTest, ADeviceQueryFailingMidwayEndsOnlyThatImplementation)
{
    m_runtime.describe("[realsense-capture]\nname = Flaky\nfault.query = 1\n"
                       "[realsense-camera]\nname = First\n[realsense-camera]\nname = Lost\n"
                       "[realsense-camera]\nname = Never\n"
                       "[realsense-capture]\nname = Steady\n[realsense-camera]\nname = Other\n");
    DeviceInfos devices;
    EXPECT_EQ(2u, sorvane::enumIntelRealSenseDevice(devices));
    EXPECT_EQ((std::vector<std::string>{"First", "Other"}), names(devices));
    const std::string journal = joined(m_runtime.journal());
    EXPECT_TRUE(contains(journal, "QueryDeviceInfo Flaky 1 failed -201\nRelease capture Flaky\n"
                                  "QueryImpl 1 group 4 subgroup 2: Steady\n"))
        << journal;
}

TEST_F(RealSenseEnumerationTest, WithoutASessionEveryRouteIsTriedInOrderAndNothingIsListed)
{
    m_runtime.describe(std::string("[realsense-runtime]\nfault.session = -503\n") + kTwoCaptures);
    DeviceInfos devices;
    EXPECT_EQ(0u, sorvane::enumIntelRealSenseDevice(devices));
    EXPECT_EQ(1u, logged("39 No sessions instantiable."));

    // The lab's keys: "." first, then the Wow6432Node key's SDK folder, then "Core" without
    // the local runtime. The relative fallback after each local route finds nothing here.
    const std::string bin = lower(narrow(binFolder()));
    std::vector<std::string> calls;
    for (const std::string &entry : m_runtime.journal()) {
        if (entry.compare(0, 20, "PXCSession_CreateExt") == 0)
            calls.push_back(lower(entry));
        else
            EXPECT_EQ("Session refused -503", entry);
    }
    EXPECT_EQ((std::vector<std::string>{
                  "pxcsession_createext 4 0 0 0 1 0 " + bin + "libpxcsession.dll",
                  "pxcsession_createext 4 0 0 0 1 0 " + bin + "realsense\\sdk\\bin\\x64\\libpxcsession.dll",
                  "pxcsession_createext 4 0 0 0 0 0 " + bin + "realsense\\core\\libpxcsession.dll"}),
              calls);
}

// "." is the folder of the libSorvane.dll that runs, wherever it was loaded from.
TEST_F(RealSenseEnumerationTest, TheDotRouteFollowsTheLibraryToAnotherFolder)
{
    m_runtime.describe(kTwoCaptures);
    sorvane::test::ScratchFolder elsewhere(L"sorvane-realsense-elsewhere");
    for (const wchar_t *file : {L"depthprobe.exe", L"libSorvane.dll", L"libpxcsession.dll"})
        ASSERT_TRUE(CopyFileW((binFolder() + file).c_str(), elsewhere.file(file).c_str(), FALSE));

    const DepthProbe::Outcome outcome = DepthProbe::run(elsewhere.file(L"depthprobe.exe"));
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(0u, outcome.exitCode);
    EXPECT_TRUE(contains(outcome.output, "count 3\ncamera Cam F200\ncamera Cam SR300\ncamera Cam R200\n"))
        << outcome.output;
    const std::vector<std::string> journal = m_runtime.journal();
    ASSERT_FALSE(journal.empty());
    EXPECT_EQ("pxcsession_createext 4 0 0 0 1 0 " + lower(narrow(elsewhere.file(L"libpxcsession.dll"))),
              lower(journal[0]));
}

// Wine, like Windows, reports 6.2 to a program without a manifest naming Windows 10.
TEST_F(RealSenseEnumerationTest, OnWindows8NothingIsLoadedAndNothingListed)
{
    m_runtime.describe(kTwoCaptures);
    const DepthProbe::Outcome outcome = DepthProbe::run(binFolder() + L"depthprobe-win8.exe");
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(0u, outcome.exitCode);
    EXPECT_TRUE(contains(outcome.output, "log libSorvane 2 32 By camera requirement, we enumerate Intel RealSense "
                                         "devices only in Windows 8.1 or greater\n"))
        << outcome.output;
    EXPECT_TRUE(contains(outcome.output, "count 0\n")) << outcome.output;
    EXPECT_FALSE(contains(outcome.output, "\ncamera ")) << outcome.output;
    EXPECT_FALSE(contains(outcome.output, "No sessions instantiable.")) << outcome.output;
    EXPECT_FALSE(contains(outcome.output, "Loading the RealSense runtime")) << outcome.output;
    EXPECT_TRUE(m_runtime.journal().empty()) << joined(m_runtime.journal());

    // The same program with the manifest lists the cameras.
    EXPECT_TRUE(contains(DepthProbe::run(binFolder() + L"depthprobe.exe").output, "count 3\n"));
}
