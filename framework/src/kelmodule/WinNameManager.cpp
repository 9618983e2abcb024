#include <kelmodule/WinNameManager.h>

namespace kelmodule {

HANDLE WinNameManager::openDevice(const kel::String &devicePath, DWORD access)
{
    if (devicePath.isEmpty())
        return INVALID_HANDLE_VALUE;
    return CreateFileW(devicePath.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace kelmodule
