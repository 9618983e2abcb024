// Owns a buffer from CoTaskMemAlloc, or one a COM call handed over (StringFromCLSID,
// IMoniker::GetDisplayName ...), and frees it with CoTaskMemFree.
#pragma once

#include <objbase.h>

namespace sorvane {

template <class T>
class CoTaskMemPtr {
public:
    CoTaskMemPtr() : m_p(nullptr) {}
    explicit CoTaskMemPtr(T *p) : m_p(p) {}
    ~CoTaskMemPtr() { CoTaskMemFree(m_p); }
    CoTaskMemPtr(const CoTaskMemPtr &) = delete;
    CoTaskMemPtr &operator=(const CoTaskMemPtr &) = delete;

    static CoTaskMemPtr allocate(size_t bytes) { return CoTaskMemPtr(static_cast<T *>(CoTaskMemAlloc(bytes))); }
    CoTaskMemPtr(CoTaskMemPtr &&other) noexcept : m_p(other.detach()) {}

    T *get() const { return m_p; }
    T *operator->() const { return m_p; }
    explicit operator bool() const { return m_p != nullptr; }

    // For out-parameters: frees what is held and hands out the slot.
    T **receive()
    {
        reset();
        return &m_p;
    }
    void reset(T *p = nullptr)
    {
        CoTaskMemFree(m_p);
        m_p = p;
    }
    T *detach()
    {
        T *p = m_p;
        m_p = nullptr;
        return p;
    }

private:
    T *m_p;
};

} // namespace sorvane
