// Writes one described device as the moniker a driver would publish:
//   HKLM\Software\Classes\CLSID\{category}\Instance\<name>
// with "FriendlyName", "CLSID" (the lab class serving the kind), "Description", "DevicePath",
// every other key of the description as a string value, and "LabKeys" listing those keys.
#pragma once

#include <windows.h>
#include <string>

#include "setup/LabDescription.h"

namespace lab {

class MonikerWriter {
public:
    // labDll: sorvanelab.dll, which names the class and category of each kind.
    explicit MonikerWriter(HMODULE labDll);

    struct Written {
        std::wstring key; // below HKEY_LOCAL_MACHINE
        std::wstring name;
        GUID category = GUID_NULL;
    };

    // False for hardware described with "moniker = no": it has a SetupAPI record only (a
    // device whose driver publishes no capture filter).
    static bool hasMoniker(const DeviceDescription &device);

    // keepExisting: refuse to write over a moniker that is already there (a test's device
    // must not replace, and later remove, a device of the lab).
    HRESULT write(const DeviceDescription &device, bool keepExisting, Written &written, std::wstring &error) const;

private:
    HRESULT resolveClass(const DeviceDescription &device, CLSID &clsid, GUID &category, std::wstring &error) const;

    HMODULE m_dll;
};

} // namespace lab
