#include "StaticClassFactory.h"

namespace sorvane {
namespace test {

STDMETHODIMP StaticClassFactory::QueryInterface(REFIID iid, void **out)
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

} // namespace test
} // namespace sorvane
