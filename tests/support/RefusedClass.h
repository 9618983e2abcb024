#pragma once

#include <windows.h>
#include <objbase.h>

namespace sorvane {
namespace test {

// While it lives, creating one COM class on this thread's apartment fails with a given code,
// as it does when Windows cannot load the component: a class object that refuses every
// instance is registered over the system's (CoRegisterClassObject), then revoked.
class RefusedClass {
public:
    RefusedClass(REFCLSID classId, HRESULT refusal);
    ~RefusedClass();
    RefusedClass(const RefusedClass &) = delete;
    RefusedClass &operator=(const RefusedClass &) = delete;

    bool active() const { return m_cookie != 0; }
    // Instances asked for while it lived.
    long refusals() const { return m_factory.refusals; }

private:
    // Lives exactly as long as its registration, so its reference count is never needed.
    struct Factory : IClassFactory {
        HRESULT refusal = E_FAIL;
        long refusals = 0;

        STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
        STDMETHODIMP_(ULONG) AddRef() override { return 2; }
        STDMETHODIMP_(ULONG) Release() override { return 1; }
        STDMETHODIMP CreateInstance(IUnknown *outer, REFIID iid, void **out) override;
        STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    };

    Factory m_factory;
    DWORD m_cookie;
};

} // namespace test
} // namespace sorvane
