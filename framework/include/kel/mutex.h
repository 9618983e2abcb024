#pragma once

#include <kel/Export.h>

namespace kel {

// A recursive lock for data shared with DirectShow's streaming thread.
class KEL_API mutex {
public:
    mutex();
    ~mutex();
    mutex(const mutex &) = delete;
    mutex &operator=(const mutex &) = delete;

    void lock();
    void unlock();

    class scoped_lock {
    public:
        explicit scoped_lock(mutex &m) : m_mutex(m) { m_mutex.lock(); }
        ~scoped_lock() { m_mutex.unlock(); }
        scoped_lock(const scoped_lock &) = delete;
        scoped_lock &operator=(const scoped_lock &) = delete;

    private:
        mutex &m_mutex;
    };

private:
    void *m_section;
};

} // namespace kel
