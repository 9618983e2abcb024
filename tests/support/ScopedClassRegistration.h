// A class object registered over one COM class on this thread's apartment for the life of the
// scope (CoRegisterClassObject), then revoked: creating the class meets the test's object
// instead of the system's.
#pragma once

#include <windows.h>
#include <objbase.h>

namespace sorvane {
namespace test {

class ScopedClassRegistration {
public:
    ScopedClassRegistration(REFCLSID classId, IClassFactory *classObject);
    ~ScopedClassRegistration();
    ScopedClassRegistration(const ScopedClassRegistration &) = delete;
    ScopedClassRegistration &operator=(const ScopedClassRegistration &) = delete;

    bool active() const { return m_cookie != 0; }

private:
    DWORD m_cookie;
};

} // namespace test
} // namespace sorvane
