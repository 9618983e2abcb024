// IClassFactory for one registered lab class.
#pragma once

#include "common/ClassRegistry.h"
#include "common/LabModule.h"

namespace lab {

// Holds the server while it exists, so DllCanUnloadNow waits for it.
class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(CreateFunction create);
    ~ClassFactory();
    ClassFactory(const ClassFactory &) = delete;
    ClassFactory &operator=(const ClassFactory &) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP CreateInstance(IUnknown *outer, REFIID iid, void **out) override;
    STDMETHODIMP LockServer(BOOL lock) override;

private:
    volatile LONG m_refs = 0;
    CreateFunction m_create;
};

} // namespace lab
