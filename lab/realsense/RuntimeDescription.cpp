#include "realsense/RuntimeDescription.h"

#include "common/DeviceConfig.h"
#include "common/RegistryKey.h"
#include "setup/LabDescription.h"

#include <windows.h>

#include <cwchar>
#include <utility>

namespace lab {
namespace realsense {

namespace {

const wchar_t kRecordedDescriptionKey[] = L"Software\\Sorvane\\Lab\\RealSense";

int32_t integer(const std::wstring &text, int32_t fallback)
{
    long long value = 0;
    return DeviceConfig::parseInteger(text, value) ? static_cast<int32_t>(value) : fallback;
}

// A word of `words` (compared in lower case), else the text as a number, else `fallback`.
int32_t named(const std::wstring &text, const std::vector<std::pair<const wchar_t *, int32_t>> &words, int32_t fallback)
{
    const std::wstring name = DeviceConfig::lower(DeviceConfig::trim(text));
    for (const auto &word : words) {
        if (name == word.first)
            return word.second;
    }
    return integer(text, fallback);
}

int32_t model(const std::wstring &text)
{
    return named(text,
                 {{L"f200", sdk::kModelF200},
                  {L"r200", sdk::kModelR200},
                  {L"sr300", sdk::kModelSR300},
                  {L"r200-enhanced", sdk::kModelR200Enhanced}},
                 sdk::kModelGeneric);
}

int32_t orientation(const std::wstring &text)
{
    return named(text, {{L"user-facing", sdk::kOrientationUserFacing}, {L"world-facing", sdk::kOrientationWorldFacing}},
                 sdk::kOrientationAny);
}

int32_t connection(const std::wstring &text)
{
    return named(text, {{L"integrated", sdk::kConnectionUsbIntegrated}, {L"peripheral", sdk::kConnectionUsbPeripheral}},
                 sdk::kConnectionUnknown);
}

int32_t streams(const std::wstring &text)
{
    int32_t flags = 0;
    for (const std::wstring &part : DeviceConfig::split(text, L','))
        flags |= named(part,
                       {{L"color", sdk::kStreamColor},
                        {L"depth", sdk::kStreamDepth},
                        {L"ir", sdk::kStreamIr},
                        {L"left", sdk::kStreamLeft},
                        {L"right", sdk::kStreamRight},
                        {L"aux-color", sdk::kStreamAuxColor}},
                       0);
    return flags;
}

} // namespace

RuntimeDescription RuntimeDescription::load()
{
    RuntimeDescription runtime;
    const std::wstring path = descriptionPath();
    LabDescription description;
    std::wstring error;
    if (!path.empty() && description.load(path, error))
        runtime.read(description);
    return runtime;
}

std::wstring RuntimeDescription::descriptionPath()
{
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetEnvironmentVariableW(L"SORVANE_LAB_REALSENSE_CONFIG", path, MAX_PATH);
    if (length > 0 && length < MAX_PATH)
        return std::wstring(path, length);
    RegistryKey key;
    std::wstring recorded;
    if (RegistryKey::open(HKEY_LOCAL_MACHINE, kRecordedDescriptionKey, KEY_READ, key) == ERROR_SUCCESS)
        key.readString(L"Description", recorded);
    return recorded;
}

void RuntimeDescription::read(const LabDescription &description)
{
    for (const DeviceDescription &section : description.devices()) {
        if (section.kind == L"realsense-runtime")
            m_sessionFault = integer(section.value(L"fault.session"), sdk::kNoError);
        else if (section.kind == L"realsense-capture")
            m_captures.push_back(capture(section));
        else if (section.kind == L"realsense-camera" && !m_captures.empty())
            m_captures.back().cameras.push_back(camera(section, cameraCount()));
    }
}

CaptureDescription RuntimeDescription::capture(const DeviceDescription &section)
{
    CaptureDescription capture;
    capture.name = section.value(L"name");
    capture.createFault = integer(section.value(L"fault.create"), sdk::kNoError);
    capture.queryFailsFrom = integer(section.value(L"fault.query"), -1);
    return capture;
}

int32_t RuntimeDescription::cameraCount() const
{
    int32_t count = 0;
    for (const CaptureDescription &capture : m_captures)
        count += static_cast<int32_t>(capture.cameras.size());
    return count;
}

CameraDescription RuntimeDescription::camera(const DeviceDescription &section, int32_t duid)
{
    CameraDescription camera;
    camera.name = section.value(L"name");
    camera.serial = section.value(L"serial");
    camera.did = section.value(L"did");
    const std::vector<std::wstring> firmware = DeviceConfig::split(section.value(L"firmware"), L'.');
    for (size_t i = 0; i < firmware.size() && i < 4; ++i)
        camera.firmware[i] = integer(firmware[i], 0);
    const std::vector<std::wstring> location = DeviceConfig::split(section.value(L"location"), L',');
    for (size_t i = 0; i < location.size() && i < 2; ++i)
        camera.location[i] = std::wcstof(location[i].c_str(), nullptr);
    camera.model = model(section.value(L"model"));
    camera.orientation = orientation(section.value(L"orientation"));
    camera.streams = streams(section.value(L"streams"));
    camera.rotation = integer(section.value(L"rotation"), 0);
    camera.connectionType = connection(section.value(L"connection"));
    camera.duid = duid;
    return camera;
}

} // namespace realsense
} // namespace lab
