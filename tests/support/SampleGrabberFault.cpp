#include "SampleGrabberFault.h"

#include <SdkGuids.h>

namespace sorvane {
namespace test {

SampleGrabberFault::SampleGrabberFault(FaultySampleGrabber::Method refused, HRESULT refusal) : m_cookie(0)
{
    m_factory.refused = refused;
    m_factory.refusal = refusal;
    if (FAILED(CoRegisterClassObject(CLSID_SampleGrabber, &m_factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                     &m_cookie)))
        m_cookie = 0;
}

SampleGrabberFault::~SampleGrabberFault()
{
    if (m_cookie)
        CoRevokeClassObject(m_cookie);
}

STDMETHODIMP SampleGrabberFault::Factory::QueryInterface(REFIID iid, void **out)
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

STDMETHODIMP SampleGrabberFault::Factory::CreateInstance(IUnknown *outer, REFIID iid, void **out)
{
    if (outer)
        return CLASS_E_NOAGGREGATION;
    const HRESULT hr = FaultySampleGrabber::create(refused, refusal, iid, out);
    if (SUCCEEDED(hr))
        ++made;
    return hr;
}

} // namespace test
} // namespace sorvane
