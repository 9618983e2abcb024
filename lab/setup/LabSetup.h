// Writes the lab into the registry of the running (Wine) system: the COM classes of
// sorvanelab.dll with the decoders' filter data, one moniker per described device, and the
// SetupAPI record and driver package of each described piece of hardware.
#pragma once

#include <windows.h>
#include <string>
#include <vector>

#include "setup/LabDescription.h"

namespace lab {

class LabSetup {
public:
    explicit LabSetup(HMODULE labDll);

    HRESULT registerClasses();
    // Removes the devices an earlier run wrote, then writes the described ones.
    HRESULT writeDevices(const LabDescription &description, std::wstring &error);
    // Binds every written device through the system device enumerator, as the library will,
    // so a mistake in the description shows here (devices meant to refuse the bind excepted).
    HRESULT verifyDevices(std::wstring &error);

private:
    struct WrittenDevice {
        std::wstring name;
        GUID category;
        bool refusesBind;
    };

    HRESULT removeEarlierDevices();
    HRESULT writeDevice(const DeviceDescription &device, std::wstring &error);
    // The Plug and Play records and driver packages of the described hardware.
    HRESULT writeSetupApiRecords(const LabDescription &description, std::wstring &error);

    HMODULE m_dll;
    std::vector<WrittenDevice> m_written;
};

} // namespace lab
