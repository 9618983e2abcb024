// Owns a SetupAPI device information list and destroys it.
#pragma once

#include <windows.h>
#include <setupapi.h>

namespace sorvane {

class ScopedDeviceInfoList {
public:
    explicit ScopedDeviceInfoList(HDEVINFO list);
    ~ScopedDeviceInfoList();
    ScopedDeviceInfoList(const ScopedDeviceInfoList &) = delete;
    ScopedDeviceInfoList &operator=(const ScopedDeviceInfoList &) = delete;

    HDEVINFO get() const { return m_list; }
    bool isValid() const { return m_list != INVALID_HANDLE_VALUE; }

private:
    HDEVINFO m_list;
};

} // namespace sorvane
