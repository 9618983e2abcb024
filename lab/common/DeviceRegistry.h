// The simulated devices the process has seen or been told about, by friendly name (the name
// the description file gives and the moniker's "FriendlyName" holds).
#pragma once

#include <memory>
#include <string>

#include "common/DeviceState.h"

namespace lab {

class DeviceRegistry {
public:
    // The device's shared state, created on first use.
    static std::shared_ptr<DeviceState> device(const std::wstring &name);
};

} // namespace lab
