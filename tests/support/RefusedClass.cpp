#include "RefusedClass.h"

namespace sorvane {
namespace test {

RefusedClass::RefusedClass(REFCLSID classId, HRESULT refusal) : m_factory(refusal), m_registration(classId, &m_factory)
{
}

STDMETHODIMP RefusedClass::Factory::CreateInstance(IUnknown *, REFIID, void **out)
{
    if (out)
        *out = nullptr;
    ++refusals;
    return refusal;
}

} // namespace test
} // namespace sorvane
