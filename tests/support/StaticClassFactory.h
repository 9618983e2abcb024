// The IUnknown half of a test's class object that lives exactly as long as its registration
// (ScopedClassRegistration), so its reference count is never needed. Derived class objects
// make (or refuse) the instances.
#pragma once

#include <windows.h>
#include <objbase.h>

namespace sorvane {
namespace test {

struct StaticClassFactory : IClassFactory {
    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

} // namespace test
} // namespace sorvane
