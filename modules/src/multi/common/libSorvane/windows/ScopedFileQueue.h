// Opens a SetupAPI file queue and closes it.
#pragma once

#include <windows.h>
#include <setupapi.h>

namespace sorvane {

class ScopedFileQueue {
public:
    ScopedFileQueue();
    ~ScopedFileQueue();
    ScopedFileQueue(const ScopedFileQueue &) = delete;
    ScopedFileQueue &operator=(const ScopedFileQueue &) = delete;

    HSPFILEQ get() const { return m_queue; }
    bool isOpen() const { return m_queue != INVALID_HANDLE_VALUE; }

private:
    HSPFILEQ m_queue;
};

} // namespace sorvane
