#include "ScopedClassRegistration.h"

namespace sorvane {
namespace test {

ScopedClassRegistration::ScopedClassRegistration(REFCLSID classId, IClassFactory *classObject) : m_cookie(0)
{
    if (FAILED(CoRegisterClassObject(classId, classObject, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie)))
        m_cookie = 0;
}

ScopedClassRegistration::~ScopedClassRegistration()
{
    if (m_cookie)
        CoRevokeClassObject(m_cookie);
}

} // namespace test
} // namespace sorvane
