// `sorvane-diag depth` against the lab's stand-in RealSense runtime: the cameras as a table and
// in the report, and a clear sentence when the runtime gives none, is missing, or the system is
// older than Windows 8.1. Some cases remove the dispatch keys of the shared prefix (restored
// afterwards), so ctest runs this program alone.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ProgramCopies.h"
#include "SavedRegistryValue.h"
#include "ScratchFolder.h"
#include "StandInRuntime.h"

#include <gtest/gtest.h>

#include <vector>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::SavedRegistryValue;
using sorvane::test::StandInRuntime;

namespace {

const int kNoDevice = 12;
const int kNotSupported = 18;

// A copy of the host whose manifest names no supported Windows, so that the system reports
// Windows 8 to it. (Wine 8 does not delete resources through UpdateResourceW, so the manifest is
// replaced rather than removed.) Empty when the copy cannot be made.
std::wstring hostReportingWindows8(const sorvane::test::ScratchFolder &folder)
{
    static const char kPlainManifest[] =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
        "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\"></assembly>\n";
    const std::wstring copy = folder.file(L"sorvane-diag-win8.exe");
    if (!CopyFileW(HostProgram::programPath().c_str(), copy.c_str(), FALSE))
        return std::wstring();
    HANDLE update = BeginUpdateResourceW(copy.c_str(), FALSE);
    if (!update)
        return std::wstring();
    const bool replaced =
        UpdateResourceW(update, RT_MANIFEST, MAKEINTRESOURCEW(1), MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US),
                        const_cast<char *>(kPlainManifest), sizeof kPlainManifest - 1) != FALSE;
    return EndUpdateResourceW(update, !replaced) && replaced ? copy : std::wstring();
}

// Runs `program` with these arguments and returns its exit status and standard output.
DWORD runCopy(const std::wstring &program, const std::wstring &arguments, std::string &output,
              const sorvane::test::ScratchFolder &folder)
{
    const std::wstring outputFile = folder.file(L"out.txt");
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    HANDLE out = CreateFileW(outputFile.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
    std::wstring commandLine = L"\"" + program + L"\" " + arguments;
    std::vector<wchar_t> buffer(commandLine.begin(), commandLine.end());
    buffer.push_back(L'\0');
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = out;
    startup.hStdError = out;
    PROCESS_INFORMATION process = {};
    DWORD exitCode = 0xFFFFFFFF;
    if (CreateProcessW(program.c_str(), buffer.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                       &process)) {
        WaitForSingleObject(process.hProcess, 60000);
        GetExitCodeProcess(process.hProcess, &exitCode);
        CloseHandle(process.hProcess);
        CloseHandle(process.hThread);
    }
    CloseHandle(out);
    // The ended program's copy of the handle may close a moment after it is reported ended, so
    // the file is read sharing write access.
    output.clear();
    HANDLE in = CreateFileW(outputFile.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, 0, nullptr);
    char chunk[4096];
    DWORD read = 0;
    while (in != INVALID_HANDLE_VALUE && ReadFile(in, chunk, sizeof chunk, &read, nullptr) && read > 0)
        output.append(chunk, read);
    if (in != INVALID_HANDLE_VALUE)
        CloseHandle(in);
    return exitCode;
}

} // namespace

TEST(SorvaneDiagDepthTest, ListsTheLabCamerasAsATableAndInTheReport)
{
    const HostProgram::Outcome table = HostProgram::run({L"depth"});
    ASSERT_TRUE(table.finished);
    EXPECT_EQ(0u, table.exitCode) << table.err;
    EXPECT_TRUE(contains(table.out, "2 RealSense cameras:")) << table.out;
    EXPECT_TRUE(contains(table.out, "Name                Model  Orientation   Rotation  Connection  Firmware   Serial"
                                    "         Streams"))
        << table.out;
    EXPECT_TRUE(contains(table.out, "Lab RealSense F200  F200   user-facing   0         peripheral  2.60.0.0   "
                                    "LABF200000001  color, depth, ir"))
        << table.out;
    EXPECT_TRUE(contains(table.out, "Lab RealSense R200  R200   world-facing  180       integrated  2.0.71.28  "
                                    "LABR200000002  color, depth, left, right"))
        << table.out;

    const JsonValue json = JsonValue::parse(HostProgram::run({L"depth", L"--json", L"-"}).out);
    EXPECT_EQ("PASS", json["result"].text());
    const JsonValue &cameras = json["cameras"];
    ASSERT_EQ(2u, cameras.size());
    EXPECT_EQ("Lab RealSense R200", cameras[1]["name"].text());
    EXPECT_EQ("LABR200000002", cameras[1]["serial"].text());
    EXPECT_EQ("R200", cameras[1]["model"].text());
    EXPECT_EQ("world-facing", cameras[1]["orientation"].text());
    EXPECT_EQ("2.0.71.28", cameras[1]["firmware"].text());
    EXPECT_EQ(180.0, cameras[1]["rotation"].number());
    EXPECT_EQ("integrated", cameras[1]["connection"].text());
    EXPECT_EQ(0.0, cameras[0]["rotation"].number());
    EXPECT_EQ("peripheral", cameras[0]["connection"].text());
    ASSERT_EQ(4u, cameras[1]["streams"].size());
    EXPECT_EQ("right", cameras[1]["streams"][3].text());
    EXPECT_TRUE(contains(cameras[0]["deviceId"].text(), "vid_8086&pid_0a66")) << cameras[0]["deviceId"].text();

    EXPECT_TRUE(contains(HostProgram::run({L"depth", L"--help"}).out, "Usage: sorvane-diag depth [--json FILE]"));
}

// A runtime that names neither (the SDK releases before they were added leave those words zero)
// reads as mounted upright, connection unknown; a connection number the host does not know is
// shown as it came.
TEST(SorvaneDiagDepthTest, ShowsRotationAndConnectionAsTheRuntimeGivesThem)
{
    StandInRuntime runtime;
    runtime.describe("[realsense-capture]\nname = Capture\n"
                     "[realsense-camera]\nname = Older\nmodel = SR300\nstreams = color, aux-color\n"
                     "[realsense-camera]\nname = Sideways\nmodel = SR300\nrotation = 90\nconnection = 7\n");
    const HostProgram::Outcome table = HostProgram::run({L"depth"});
    EXPECT_EQ(0u, table.exitCode) << table.err;
    EXPECT_TRUE(contains(table.out, "Older     SR300  any          0         unknown     0.0.0.0           "
                                    "color, aux-color"))
        << table.out;
    EXPECT_TRUE(contains(table.out, "Sideways  SR300  any          90        7           0.0.0.0           none"))
        << table.out;

    const JsonValue json = JsonValue::parse(HostProgram::run({L"depth", L"--json", L"-"}).out);
    const JsonValue &cameras = json["cameras"];
    ASSERT_EQ(2u, cameras.size());
    EXPECT_EQ(0.0, cameras[0]["rotation"].number());
    EXPECT_EQ("unknown", cameras[0]["connection"].text());
    EXPECT_EQ("aux-color", cameras[0]["streams"][1].text());
    EXPECT_EQ(90.0, cameras[1]["rotation"].number());
    EXPECT_EQ("7", cameras[1]["connection"].text());
}

TEST(SorvaneDiagDepthTest, SaysWhyNoCameraIsListed)
{
    {
        StandInRuntime runtime;
        runtime.describe("[realsense-runtime]\nfault.session = -503\n");
        const HostProgram::Outcome outcome = HostProgram::run({L"depth", L"--json", L"-"});
        EXPECT_EQ(static_cast<DWORD>(kNoDevice), outcome.exitCode) << outcome.err;
        const JsonValue json = JsonValue::parse(outcome.out);
        EXPECT_EQ("NODEVICE", json["result"].text());
        EXPECT_EQ(0u, json["cameras"].size());
        ASSERT_EQ(1u, json["messages"].size());
        EXPECT_EQ("No RealSense cameras: the runtime could not be started or reports none (--log FILE shows which).",
                  json["messages"][0].text());
    }
    {
        const SavedRegistryValue dispatch(L"Software\\Intel\\RSSDK\\Dispatch", L"LocalRuntime");
        const SavedRegistryValue wow64(L"Software\\Wow6432Node\\Intel\\RSSDK\\Dispatch", L"LocalRuntime");
        const SavedRegistryValue core(L"Software\\Intel\\RSSDK\\v4\\Dispatch", L"Core");
        dispatch.remove();
        wow64.remove();
        core.remove();
        const HostProgram::Outcome outcome = HostProgram::run({L"depth"});
        EXPECT_EQ(static_cast<DWORD>(kNoDevice), outcome.exitCode) << outcome.err;
        EXPECT_TRUE(contains(outcome.out, "The Intel RealSense runtime is missing: none of the SDK's dispatch keys "
                                          "names one."))
            << outcome.out;
    }
}

TEST(SorvaneDiagDepthTest, BeforeWindows81NothingIsAsked)
{
    sorvane::test::ScratchFolder folder(L"sorvane-diag-depth");
    const std::wstring host = hostReportingWindows8(folder);
    ASSERT_FALSE(host.empty());
    std::string output;
    EXPECT_EQ(static_cast<DWORD>(kNotSupported), runCopy(host, L"depth", output, folder)) << output;
    EXPECT_TRUE(contains(output, "RealSense cameras are listed only on Windows 8.1 or later, and this system reports "
                                 "an older Windows."))
        << output;
}
