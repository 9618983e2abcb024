// Where a simulated tuner finds the broadcast: the description file named by the device's
// "broadcast" key (a path, relative ones beside sorvanelab.dll), by default broadcast.conf
// beside the DLL (the build copies lab/broadcast.conf there). Read again whenever it changed,
// so a test may point a device at a file of its own through an override.
#pragma once

#include <memory>
#include <string>

#include "broadcast/BroadcastDescription.h"

namespace lab {

class DeviceState;

class BroadcastSource {
public:
    // The description for the device; an empty one (and the reason) when the file is unreadable.
    static std::shared_ptr<const BroadcastDescription> forDevice(const DeviceState &device, std::wstring &problem);

private:
    static std::wstring resolve(const std::wstring &path);
};

} // namespace lab
