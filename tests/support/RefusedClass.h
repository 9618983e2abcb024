#pragma once

#include "ScopedClassRegistration.h"
#include "StaticClassFactory.h"

namespace sorvane {
namespace test {

// While it lives, creating one COM class on this thread's apartment fails with a given code,
// as it does when Windows cannot load the component: a class object that refuses every
// instance is registered over the system's (CoRegisterClassObject), then revoked.
class RefusedClass {
public:
    RefusedClass(REFCLSID classId, HRESULT refusal);
    RefusedClass(const RefusedClass &) = delete;
    RefusedClass &operator=(const RefusedClass &) = delete;

    bool active() const { return m_registration.active(); }
    // Instances asked for while it lived.
    long refusals() const { return m_factory.refusals; }

private:
    struct Factory : StaticClassFactory {
        explicit Factory(HRESULT refusal) : refusal(refusal) {}

        HRESULT refusal;
        long refusals = 0;

        STDMETHODIMP CreateInstance(IUnknown *outer, REFIID iid, void **out) override;
    };

    Factory m_factory;
    // Revoked before the factory goes.
    ScopedClassRegistration m_registration;
};

} // namespace test
} // namespace sorvane
