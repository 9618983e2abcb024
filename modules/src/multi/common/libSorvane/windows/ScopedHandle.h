// Owns a kernel handle and closes it. Null and INVALID_HANDLE_VALUE both mean "nothing held",
// but only null tests false: callers that must tell the two apart can.
#pragma once

#include "SorvaneExport.h"
#include <windows.h>

namespace sorvane {

class SORVANE_API ScopedHandle {
public:
    explicit ScopedHandle(HANDLE handle = nullptr);
    ~ScopedHandle();
    ScopedHandle(const ScopedHandle &) = delete;
    ScopedHandle &operator=(const ScopedHandle &) = delete;

    HANDLE get() const { return m_handle; }
    explicit operator bool() const { return m_handle != nullptr; }
    void reset(HANDLE handle = nullptr);

private:
    HANDLE m_handle;
};

} // namespace sorvane
