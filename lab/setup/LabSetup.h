// Writes the lab into the registry of the running (Wine) system: the COM classes of
// sorvanelab.dll with the decoders' filter data, and one moniker per described device.
#pragma once

#include <windows.h>
#include <string>

#include "setup/LabDescription.h"

namespace lab {

class LabSetup {
public:
    explicit LabSetup(HMODULE labDll);

    HRESULT registerClasses();
    // Removes the devices an earlier run wrote, then writes the described ones.
    HRESULT writeDevices(const LabDescription &description, std::wstring &error);

private:
    HRESULT removeEarlierDevices();
    HRESULT writeDevice(const DeviceDescription &device, std::wstring &error);

    HMODULE m_dll;
};

} // namespace lab
