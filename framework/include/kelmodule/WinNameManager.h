#pragma once

#include <kelmodule/Export.h>
#include <kel/String.h>
#include <windows.h>

namespace kelmodule {

class KELMODULE_API WinNameManager {
public:
    // Opens a device by its path for `access`; INVALID_HANDLE_VALUE when it cannot.
    static HANDLE openDevice(const kel::String &devicePath, DWORD access);
};

} // namespace kelmodule
