#include "RefusedClass.h"

namespace sorvane {
namespace test {

RefusedClass::RefusedClass(REFCLSID classId, HRESULT refusal) : m_cookie(0)
{
    m_factory.refusal = refusal;
    if (FAILED(CoRegisterClassObject(classId, &m_factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie)))
        m_cookie = 0;
}

RefusedClass::~RefusedClass()
{
    if (m_cookie)
        CoRevokeClassObject(m_cookie);
}

STDMETHODIMP RefusedClass::Factory::QueryInterface(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory)) {
        *out = static_cast<IClassFactory *>(this);
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
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
