#include "DepthCameraFields.h"

#include <cstdio>

namespace sorvane {
namespace diag {

DepthCameraFields::DepthCameraFields(const PXCCapture::DeviceInfo &camera) : m_camera(camera) {}

std::wstring DepthCameraFields::text(const pxcCHAR *field, size_t capacity)
{
    size_t length = 0;
    while (length < capacity && field[length] != L'\0')
        ++length;
    return std::wstring(field, length);
}

std::wstring DepthCameraFields::name() const
{
    return text(m_camera.name, sizeof m_camera.name / sizeof(pxcCHAR));
}

std::wstring DepthCameraFields::serial() const
{
    return text(m_camera.serial, sizeof m_camera.serial / sizeof(pxcCHAR));
}

std::wstring DepthCameraFields::deviceId() const
{
    return text(m_camera.did, sizeof m_camera.did / sizeof(pxcCHAR));
}

std::wstring DepthCameraFields::firmware() const
{
    std::wstring version;
    for (int part = 0; part < 4; ++part)
        version += (part ? L"." : L"") + std::to_wstring(m_camera.firmware[part]);
    return version;
}

std::wstring DepthCameraFields::model() const
{
    switch (m_camera.model) {
    case PXCCapture::DEVICE_MODEL_GENERIC:
        return L"generic";
    case PXCCapture::DEVICE_MODEL_F200:
        return L"F200";
    case PXCCapture::DEVICE_MODEL_R200:
        return L"R200";
    case PXCCapture::DEVICE_MODEL_SR300:
        return L"SR300";
    case PXCCapture::DEVICE_MODEL_R200_ENHANCED:
        return L"R200 enhanced";
    }
    wchar_t number[16];
    swprintf(number, 16, L"0x%08X", static_cast<unsigned>(m_camera.model));
    return number;
}

std::wstring DepthCameraFields::orientation() const
{
    switch (m_camera.orientation) {
    case PXCCapture::DEVICE_ORIENTATION_USER_FACING:
        return L"user-facing";
    case PXCCapture::DEVICE_ORIENTATION_WORLD_FACING:
        return L"world-facing";
    default:
        return L"any";
    }
}

std::vector<std::wstring> DepthCameraFields::streams() const
{
    static const struct {
        int flag;
        const wchar_t *name;
    } kStreams[] = {{PXCCapture::STREAM_TYPE_COLOR, L"color"}, {PXCCapture::STREAM_TYPE_DEPTH, L"depth"},
                    {PXCCapture::STREAM_TYPE_IR, L"ir"},       {PXCCapture::STREAM_TYPE_LEFT, L"left"},
                    {PXCCapture::STREAM_TYPE_RIGHT, L"right"}, {PXCCapture::STREAM_TYPE_AUX_COLOR, L"aux-color"}};
    std::vector<std::wstring> names;
    for (const auto &stream : kStreams) {
        if (m_camera.streams & stream.flag)
            names.push_back(stream.name);
    }
    return names;
}

std::wstring DepthCameraFields::streamList() const
{
    std::wstring list;
    for (const std::wstring &stream : streams())
        list += (list.empty() ? L"" : L", ") + stream;
    return list.empty() ? L"none" : list;
}

int DepthCameraFields::rotation() const
{
    return static_cast<int>(m_camera.rotation);
}

std::wstring DepthCameraFields::connection() const
{
    switch (m_camera.connectionType) {
    case PXCCapture::CONNECTION_TYPE_UNKNOWN:
        return L"unknown";
    case PXCCapture::CONNECTION_TYPE_USB_INTEGRATED:
        return L"integrated";
    case PXCCapture::CONNECTION_TYPE_USB_PERIPHERAL:
        return L"peripheral";
    }
    return std::to_wstring(static_cast<int>(m_camera.connectionType));
}

} // namespace diag
} // namespace sorvane
