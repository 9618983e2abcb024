// The fields of a RealSense camera record as words, for the `depth` table and report.
#pragma once

#include <rssdk/RealSenseSdk.h>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class DepthCameraFields {
public:
    explicit DepthCameraFields(const PXCCapture::DeviceInfo &camera);

    std::wstring name() const;
    std::wstring serial() const;
    std::wstring deviceId() const;
    // "major.minor.revision.build".
    std::wstring firmware() const;
    // "F200", "R200", "SR300", "R200 enhanced", "generic" or the number in hexadecimal.
    std::wstring model() const;
    // "user-facing", "world-facing" or "any".
    std::wstring orientation() const;
    // "color", "depth", "ir", "left", "right", "aux-color", in that order.
    std::vector<std::wstring> streams() const;
    std::wstring streamList() const;
    // How the camera is mounted, in degrees clockwise (0 also from runtimes that do not say).
    int rotation() const;
    // "integrated", "peripheral", or "unknown" (also from runtimes that do not say); another
    // value as its number.
    std::wstring connection() const;

private:
    // The text of a fixed-size field, which need not end with a terminator.
    static std::wstring text(const pxcCHAR *field, size_t capacity);

    const PXCCapture::DeviceInfo &m_camera;
};

} // namespace diag
} // namespace sorvane
