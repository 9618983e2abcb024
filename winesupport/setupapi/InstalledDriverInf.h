// The INF of the driver installed for a device, as its driver key under
// Control\Class\{class}\NNNN names it (InfPath, a file name in the Windows INF folder).
#pragma once

#include <windows.h>
#include <setupapi.h>

#include <string>

namespace winesupport {

class InstalledDriverInf {
public:
    // The INF's full path; empty when the device has no driver key or the key names no INF.
    static std::wstring pathOf(HDEVINFO set, SP_DEVINFO_DATA *device);

private:
    static std::wstring infPathValue(HKEY driverKey);
};

} // namespace winesupport
