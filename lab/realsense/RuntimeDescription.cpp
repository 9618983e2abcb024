#include "realsense/RuntimeDescription.h"

#include "common/DeviceConfig.h"
#include "common/RegistryKey.h"
#include "setup/LabDescription.h"

#include <windows.h>

namespace lab {
namespace realsense {

namespace {

const wchar_t kRecordedDescriptionKey[] = L"Software\\Sorvane\\Lab\\RealSense";

pxcI32 integer(const std::wstring &text, pxcI32 fallback)
{
    long long value = 0;
    return DeviceConfig::parseInteger(text, value) ? static_cast<pxcI32>(value) : fallback;
}

PXCCapture::DeviceModel model(const std::wstring &text)
{
    const std::wstring name = DeviceConfig::lower(text);
    if (name == L"f200")
        return PXCCapture::DEVICE_MODEL_F200;
    if (name == L"r200")
        return PXCCapture::DEVICE_MODEL_R200;
    if (name == L"sr300")
        return PXCCapture::DEVICE_MODEL_SR300;
    if (name == L"r200-enhanced")
        return PXCCapture::DEVICE_MODEL_R200_ENHANCED;
    return static_cast<PXCCapture::DeviceModel>(integer(text, PXCCapture::DEVICE_MODEL_GENERIC));
}

PXCCapture::DeviceOrientation orientation(const std::wstring &text)
{
    const std::wstring name = DeviceConfig::lower(text);
    if (name == L"user-facing")
        return PXCCapture::DEVICE_ORIENTATION_USER_FACING;
    if (name == L"world-facing")
        return PXCCapture::DEVICE_ORIENTATION_WORLD_FACING;
    return PXCCapture::DEVICE_ORIENTATION_ANY;
}

pxcI32 streams(const std::wstring &text)
{
    pxcI32 flags = 0;
    for (const std::wstring &part : DeviceConfig::split(text, L',')) {
        const std::wstring name = DeviceConfig::lower(part);
        if (name == L"color")
            flags |= PXCCapture::STREAM_TYPE_COLOR;
        else if (name == L"depth")
            flags |= PXCCapture::STREAM_TYPE_DEPTH;
        else if (name == L"ir")
            flags |= PXCCapture::STREAM_TYPE_IR;
        else if (name == L"left")
            flags |= PXCCapture::STREAM_TYPE_LEFT;
        else if (name == L"right")
            flags |= PXCCapture::STREAM_TYPE_RIGHT;
    }
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
            m_sessionFault = integer(section.value(L"fault.session"), PXC_STATUS_NO_ERROR);
        else if (section.kind == L"realsense-capture")
            m_captures.push_back(capture(section));
        else if (section.kind == L"realsense-camera" && !m_captures.empty())
            m_captures.back().cameras.push_back(camera(section));
    }
}

CaptureDescription RuntimeDescription::capture(const DeviceDescription &section)
{
    CaptureDescription capture;
    capture.name = section.value(L"name");
    capture.createFault = integer(section.value(L"fault.create"), PXC_STATUS_NO_ERROR);
    capture.queryFailsFrom = integer(section.value(L"fault.query"), -1);
    return capture;
}

CameraDescription RuntimeDescription::camera(const DeviceDescription &section)
{
    CameraDescription camera;
    camera.name = section.value(L"name");
    camera.serial = section.value(L"serial");
    camera.did = section.value(L"did");
    const std::vector<std::wstring> firmware = DeviceConfig::split(section.value(L"firmware"), L'.');
    for (size_t i = 0; i < firmware.size() && i < 4; ++i)
        camera.firmware[i] = integer(firmware[i], 0);
    camera.model = model(section.value(L"model"));
    camera.orientation = orientation(section.value(L"orientation"));
    camera.streams = streams(section.value(L"streams"));
    return camera;
}

} // namespace realsense
} // namespace lab
