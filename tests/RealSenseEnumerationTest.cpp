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
                            "model = F200\n"
                            "orientation = user-facing\n"
                            "streams = color, depth, ir\n"
                            "[realsense-camera]\n"
                            "name = Cam SR300\n"
                            "model = SR300\n"
                            "[realsense-capture]\n"
                            "name = World\n"
                            "[realsense-camera]\n"
                            "name = Cam R200\n"
                            "model = R200\n"
                            "orientation = world-facing\n"
                            "streams = color, depth, left, right\n";

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
    ASSERT_EQ((std::vector<std::string>{"Cam F200", "Cam SR300", "Cam R200"}), names(devices));

    const PXCCapture::DeviceInfo &front = devices[0];
    EXPECT_EQ(L"F-1", std::wstring(front.serial));
    EXPECT_EQ(L"\\\\?\\usb#vid_8086&pid_0a66#1#{e5323777}\\global", std::wstring(front.did));
    EXPECT_EQ(2, front.firmware[0]);
    EXPECT_EQ(60, front.firmware[1]);
    EXPECT_EQ(1, front.firmware[3]);
    EXPECT_EQ(PXCCapture::DEVICE_MODEL_F200, front.model);
    EXPECT_EQ(PXCCapture::DEVICE_ORIENTATION_USER_FACING, front.orientation);
    EXPECT_EQ(PXCCapture::STREAM_TYPE_COLOR | PXCCapture::STREAM_TYPE_DEPTH | PXCCapture::STREAM_TYPE_IR,
              front.streams);
    EXPECT_EQ(PXCCapture::DEVICE_MODEL_SR300, devices[1].model);
    EXPECT_EQ(PXCCapture::DEVICE_ORIENTATION_WORLD_FACING, devices[2].orientation);
    EXPECT_EQ(0, devices[2].didx);

    // "." names the folder of libSorvane.dll; the local runtime is asked for.
    const std::string module = lower(narrow(binFolder()) + "libpxcsession.dll");
    const std::vector<std::string> journal = m_runtime.journal();
    ASSERT_FALSE(journal.empty());
    EXPECT_EQ("pxcsession_createext 4 0 0 0 1 0 " + module, lower(journal[0]));
    EXPECT_EQ((std::vector<std::string>{
                  "Session created", "QueryImpl 0 Front", "CreateImpl Front", "QueryDeviceInfo Front 0 Cam F200",
                  "QueryDeviceInfo Front 1 Cam SR300", "QueryDeviceInfo Front 2 failed -3", "Release capture Front",
                  "QueryImpl 1 World", "CreateImpl World", "QueryDeviceInfo World 0 Cam R200",
                  "QueryDeviceInfo World 1 failed -3", "Release capture World", "QueryImpl 2 none", "Release session"}),
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
    EXPECT_TRUE(contains(journal, "QueryImpl 0 Broken\nCreateImpl Broken failed -201\nQueryImpl 1 Front\n")) << journal;
    EXPECT_FALSE(contains(journal, "QueryDeviceInfo Broken")) << journal;
    EXPECT_TRUE(contains(journal, "QueryImpl 3 none\nRelease session\n")) << journal;
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
    EXPECT_TRUE(contains(journal, "QueryDeviceInfo Flaky 1 failed -201\nRelease capture Flaky\nQueryImpl 1 Steady\n"))
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
