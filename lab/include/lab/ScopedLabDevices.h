// Devices a test describes for itself, present for the life of a scope.
//
//   lab::ScopedLabDevices devices(L"[webcam]\n"
//                                 L"name = Test Camera\n"
//                                 L"path = \\\\?\\usb#vid_1234&pid_5678&mi_00#7&1&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
//                                 L"format = YUY2 320x240 30\n");
//
// The description uses the syntax of lab/lab.conf. Each section becomes a moniker in its
// category (served by sorvanelab.dll like the lab's own devices), and each piece of hardware
// behind a device path the SetupAPI record and driver package the setup writes for lab.conf.
// The destructor removes exactly these again. With LabDevices::Hidden every device of
// lab.conf is hidden as well (monikers, SetupAPI records, driver packages) and comes back at
// the end of the scope.
//
// The devices live in the prefix-wide registry: every program of the Wine prefix sees them,
// so a test program using this class must run alone (RUN_SERIAL). A name or instance ID that
// already exists is refused rather than replaced.
//
// Link the CMake target sorvanelab_devices.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace lab {

class ScopedLabDevices {
public:
    enum class LabDevices { Kept, Hidden };

    // Throws std::runtime_error (the description's or the registry's complaint, UTF-8) when the
    // devices cannot be written; whatever was written by then is taken away again.
    explicit ScopedLabDevices(const std::wstring &description, LabDevices labDevices = LabDevices::Kept);
    ~ScopedLabDevices();
    ScopedLabDevices(const ScopedLabDevices &) = delete;
    ScopedLabDevices &operator=(const ScopedLabDevices &) = delete;

    // Instance IDs of the SetupAPI records written, in the order of the description.
    const std::vector<std::wstring> &instanceIds() const;
    // Full paths of the driver packages (INF files) written.
    const std::vector<std::wstring> &infFiles() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace lab
