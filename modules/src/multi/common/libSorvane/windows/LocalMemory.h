// Owns a zero-filled block from LocalAlloc(LPTR) and frees it with LocalFree.
#pragma once

#include <windows.h>

namespace sorvane {

class LocalMemory {
public:
    explicit LocalMemory(size_t bytes = 0);
    ~LocalMemory();
    LocalMemory(const LocalMemory &) = delete;
    LocalMemory &operator=(const LocalMemory &) = delete;

    // Frees what is held and takes a new zero-filled block; size() is 0 when that failed.
    void reallocate(size_t bytes);
    void *get() const { return m_block; }
    size_t size() const { return m_block ? m_size : 0; }
    template <class T>
    T *as() const
    {
        return static_cast<T *>(m_block);
    }

private:
    void release();

    HLOCAL m_block;
    size_t m_size;
};

} // namespace sorvane
