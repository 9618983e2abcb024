#include "SampleGrabberFault.h"

#include <SdkGuids.h>

namespace sorvane {
namespace test {

SampleGrabberFault::SampleGrabberFault(FaultySampleGrabber::Method refused, HRESULT refusal)
    : m_factory(refused, refusal), m_registration(CLSID_SampleGrabber, &m_factory)
{
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
