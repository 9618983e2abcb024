// IClassFactory for one registered lab class.
#pragma once

#include "common/ClassRegistry.h"
#include "common/ComObject.h"
#include "common/LabModule.h"

namespace lab {

// Holds the server while it exists, so DllCanUnloadNow waits for it.
class ClassFactory final : public ComObject<IClassFactory> {
public:
    explicit ClassFactory(CreateFunction create);
    ~ClassFactory() override;

    STDMETHODIMP CreateInstance(IUnknown *outer, REFIID iid, void **out) override;
    STDMETHODIMP LockServer(BOOL lock) override;

private:
    CreateFunction m_create;
};

} // namespace lab
