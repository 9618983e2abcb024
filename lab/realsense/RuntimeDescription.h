// What the stand-in runtime reports: its capture implementations, their cameras and its faults,
// read from the lab description's [realsense-...] sections (see lab/lab.conf) each time a
// session is created. The file is the one SORVANE_LAB_REALSENSE_CONFIG names, so a test can
// describe its own runtime; without it, the lab description the setup recorded in
// HKLM\Software\Sorvane\Lab\RealSense ("Description").
#pragma once

#include "realsense/SdkInterface.h"

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
    int32_t firmware[4] = {};
    float location[2] = {};
    int32_t model = sdk::kModelGeneric;
    int32_t orientation = sdk::kOrientationAny;
    int32_t streams = 0;
    int32_t rotation = 0;
    int32_t connectionType = sdk::kConnectionUnknown;
    // Unique within a session: the camera's place among all cameras of the runtime.
    int32_t duid = 0;
};

struct CaptureDescription {
    std::wstring name;
    // Status CreateImpl fails with; success when 0 or more.
    sdk::Status createFault = sdk::kNoError;
    // Index from which QueryDeviceInfo fails although cameras are left; -1 for none.
    int queryFailsFrom = -1;
    std::vector<CameraDescription> cameras;
};

class RuntimeDescription {
public:
    // The current description; empty (no implementations, no faults) when none can be read.
    static RuntimeDescription load();

    // Status PXCSession_CreateExt fails with; success when 0 or more.
    sdk::Status sessionFault() const { return m_sessionFault; }
    const std::vector<CaptureDescription> &captures() const { return m_captures; }

    // Takes the [realsense-...] sections of a parsed description, ignoring all others.
    void read(const LabDescription &description);

private:
    static std::wstring descriptionPath();
    // How many cameras the implementations read so far have.
    int32_t cameraCount() const;
    static CameraDescription camera(const DeviceDescription &section, int32_t duid);
    static CaptureDescription capture(const DeviceDescription &section);

    sdk::Status m_sessionFault = sdk::kNoError;
    std::vector<CaptureDescription> m_captures;
};

} // namespace realsense
} // namespace lab
