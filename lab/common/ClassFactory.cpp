#include "common/ClassFactory.h"

namespace lab {

ClassFactory::ClassFactory(CreateFunction create) : m_create(create)
{
    LabModule::lockServer(true);
}

ClassFactory::~ClassFactory()
{
    LabModule::lockServer(false);
}

STDMETHODIMP ClassFactory::CreateInstance(IUnknown *outer, REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    return m_create(iid, out);
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock)
{
    LabModule::lockServer(lock != FALSE);
    return S_OK;
}

} // namespace lab
