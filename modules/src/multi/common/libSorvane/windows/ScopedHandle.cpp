#include "ScopedHandle.h"

namespace sorvane {

ScopedHandle::ScopedHandle(HANDLE handle) : m_handle(handle) {}

ScopedHandle::~ScopedHandle()
{
    reset();
}

void ScopedHandle::reset(HANDLE handle)
{
    if (m_handle && m_handle != INVALID_HANDLE_VALUE)
        CloseHandle(m_handle);
    m_handle = handle;
}

} // namespace sorvane
