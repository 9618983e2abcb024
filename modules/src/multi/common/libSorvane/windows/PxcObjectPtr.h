// Owns one RealSense SDK object (session, capture ...) and gives it back with its Release.
#pragma once

namespace sorvane {

template <class T>
class PxcObjectPtr {
public:
    explicit PxcObjectPtr(T *object = nullptr) : m_object(object) {}
    ~PxcObjectPtr() { reset(); }
    PxcObjectPtr(const PxcObjectPtr &) = delete;
    PxcObjectPtr &operator=(const PxcObjectPtr &) = delete;

    T *get() const { return m_object; }
    T *operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    void reset(T *object = nullptr)
    {
        if (m_object)
            m_object->Release();
        m_object = object;
    }

private:
    T *m_object;
};

} // namespace sorvane
