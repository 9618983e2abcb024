#include "DepthCommand.h"
#include "CommandContext.h"
#include "DepthCameraFields.h"
#include "JsonWriter.h"
#include "RunReport.h"
#include "Terminal.h"

#include <RealSenseEnumeration.h>

#include <windows.h>
// After windows.h, which it needs.
#include <versionhelpers.h>

#include <algorithm>

namespace sorvane {
namespace diag {

namespace {

const wchar_t *const kDispatchValues[][2] = {{L"Software\\Intel\\RSSDK\\Dispatch", L"LocalRuntime"},
                                             {L"Software\\Wow6432Node\\Intel\\RSSDK\\Dispatch", L"LocalRuntime"},
                                             {L"Software\\Intel\\RSSDK\\v4\\Dispatch", L"Core"}};

std::wstring padded(const std::wstring &text, size_t width)
{
    return text + std::wstring(width - text.size(), L' ');
}

} // namespace

std::wstring DepthCommand::summary() const
{
    return L"list the Intel RealSense depth cameras the RealSense runtime reports";
}

std::wstring DepthCommand::help() const
{
    return L"Usage: sorvane-diag depth [--json FILE]\n"
           L"\n"
           L"Lists the Intel RealSense cameras that the RealSense runtime reports, as the library's\n"
           L"enumIntelRealSenseDevice finds them: the runtime named by the SDK's dispatch keys\n"
           L"(HKLM\\Software\\Intel\\RSSDK\\Dispatch \"LocalRuntime\", its Wow6432Node twin, then\n"
           L"HKLM\\Software\\Intel\\RSSDK\\v4\\Dispatch \"Core\"), asked for the cameras of each of its\n"
           L"video-capture implementations. For each camera: name, model, orientation, rotation\n"
           L"(how it is mounted, in degrees clockwise), connection (integrated or peripheral),\n"
           L"firmware, serial number and streams; the report (--json) adds the device identifier.\n"
           L"A runtime of an older SDK release that does not fill them in gives 0 and unknown.\n"
           L"RealSense cameras need Windows 8.1 or later; on an older Windows nothing is asked.\n"
           L"Result: PASS when there is at least one camera, NODEVICE when the runtime is missing\n"
           L"or reports none, NOTSUPPORTED before Windows 8.1. --log FILE shows the library's steps.\n";
}

ruvo::TestResult DepthCommand::run(CommandContext &context)
{
    Cameras cameras;
    sorvane::enumIntelRealSenseDevice(cameras);
    context.report().addSection(L"cameras", [cameras](JsonWriter &json) { writeCameras(json, cameras); });
    if (cameras.isEmpty()) {
        context.say(whyNone());
        return IsWindows8Point1OrGreater() ? ruvo::TestResult::NODEVICE() : ruvo::TestResult::NOTSUPPORTED();
    }
    context.terminal().line(std::to_wstring(cameras.size()) +
                            (cameras.size() == 1 ? L" RealSense camera:" : L" RealSense cameras:"));
    for (const std::wstring &line : table(cameras))
        context.terminal().line(line);
    return ruvo::TestResult::PASS();
}

bool DepthCommand::runtimeNamed()
{
    for (const auto &value : kDispatchValues) {
        wchar_t buffer[260] = {};
        DWORD size = sizeof buffer;
        if (RegGetValueW(HKEY_LOCAL_MACHINE, value[0], value[1], RRF_RT_REG_SZ, nullptr, buffer, &size) ==
                ERROR_SUCCESS &&
            buffer[0] != L'\0')
            return true;
    }
    return false;
}

std::wstring DepthCommand::whyNone()
{
    if (!IsWindows8Point1OrGreater())
        return L"RealSense cameras are listed only on Windows 8.1 or later, and this system reports an older "
               L"Windows.";
    if (!runtimeNamed())
        return L"The Intel RealSense runtime is missing: none of the SDK's dispatch keys names one.";
    return L"No RealSense cameras: the runtime could not be started or reports none (--log FILE shows which).";
}

std::vector<std::wstring> DepthCommand::table(const Cameras &cameras)
{
    std::vector<std::vector<std::wstring>> rows;
    rows.push_back(
        {L"#", L"Name", L"Model", L"Orientation", L"Rotation", L"Connection", L"Firmware", L"Serial", L"Streams"});
    for (int i = 0; i < cameras.size(); ++i) {
        const DepthCameraFields camera(cameras[i]);
        rows.push_back({std::to_wstring(i), camera.name(), camera.model(), camera.orientation(),
                        std::to_wstring(camera.rotation()), camera.connection(), camera.firmware(), camera.serial(),
                        camera.streamList()});
    }
    std::vector<size_t> widths(rows[0].size(), 0);
    for (const auto &row : rows) {
        for (size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    }
    std::vector<std::wstring> lines;
    for (const auto &row : rows) {
        std::wstring line = L" ";
        for (size_t column = 0; column + 1 < row.size(); ++column)
            line += L" " + padded(row[column], widths[column]) + L" ";
        lines.push_back(line + L" " + row.back());
    }
    return lines;
}

void DepthCommand::writeCameras(JsonWriter &json, const Cameras &cameras)
{
    json.beginArray();
    for (int i = 0; i < cameras.size(); ++i) {
        const DepthCameraFields camera(cameras[i]);
        json.beginObject();
        json.field(L"index", i);
        json.field(L"name", camera.name());
        json.field(L"serial", camera.serial());
        json.field(L"deviceId", camera.deviceId());
        json.field(L"firmware", camera.firmware());
        json.field(L"model", camera.model());
        json.field(L"orientation", camera.orientation());
        json.field(L"rotation", camera.rotation());
        json.field(L"connection", camera.connection());
        json.key(L"streams").beginArray();
        for (const std::wstring &stream : camera.streams())
            json.value(stream);
        json.endArray();
        json.endObject();
    }
    json.endArray();
}

} // namespace diag
} // namespace sorvane
