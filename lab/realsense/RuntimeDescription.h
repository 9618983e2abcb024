// What the stand-in runtime reports: its capture implementations, their cameras and its faults,
// read from the lab description's [realsense-...] sections (see lab/lab.conf) each time a
// session is created. The file is the one SORVANE_LAB_REALSENSE_CONFIG names, so a test can
// describe its own runtime; without it, the lab description the setup recorded in
// HKLM\Software\Sorvane\Lab\RealSense ("Description").
#pragma once

#include "RealSenseSdk.h"

#include <string>
#include <vector>

namespace lab {

struct DeviceDescription;
class LabDescription;

namespace realsense {

struct CameraDescription {
    std::wstring name;
    std::wstring serial;
    std::wstring did;
    pxcI32 firmware[4] = {};
    PXCCapture::DeviceModel model = PXCCapture::DEVICE_MODEL_GENERIC;
    PXCCapture::DeviceOrientation orientation = PXCCapture::DEVICE_ORIENTATION_ANY;
    pxcI32 streams = 0;
};

struct CaptureDescription {
    std::wstring name;
    // Status CreateImpl fails with; success when 0 or more.
    pxcStatus createFault = PXC_STATUS_NO_ERROR;
    // Index from which QueryDeviceInfo fails although cameras are left; -1 for none.
    int queryFailsFrom = -1;
    std::vector<CameraDescription> cameras;
};

class RuntimeDescription {
public:
    // The current description; empty (no implementations, no faults) when none can be read.
    static RuntimeDescription load();

    // Status PXCSession_CreateExt fails with; success when 0 or more.
    pxcStatus sessionFault() const { return m_sessionFault; }
    const std::vector<CaptureDescription> &captures() const { return m_captures; }

    // Takes the [realsense-...] sections of a parsed description, ignoring all others.
    void read(const LabDescription &description);

private:
    static std::wstring descriptionPath();
    static CameraDescription camera(const DeviceDescription &section);
    static CaptureDescription capture(const DeviceDescription &section);

    pxcStatus m_sessionFault = PXC_STATUS_NO_ERROR;
    std::vector<CaptureDescription> m_captures;
};

} // namespace realsense
} // namespace lab
