#pragma once

#include "FaultySampleGrabber.h"
#include "ScopedClassRegistration.h"
#include "StaticClassFactory.h"

namespace sorvane {
namespace test {

// While it lives, every sample grabber made on this thread's apartment is the system's with
// one ISampleGrabber method refusing (FaultySampleGrabber): a class object registered over
// CLSID_SampleGrabber, then revoked.
class SampleGrabberFault {
public:
    SampleGrabberFault(FaultySampleGrabber::Method refused, HRESULT refusal);
    SampleGrabberFault(const SampleGrabberFault &) = delete;
    SampleGrabberFault &operator=(const SampleGrabberFault &) = delete;

    bool active() const { return m_registration.active(); }
    long grabbersMade() const { return m_factory.made; }

private:
    struct Factory : StaticClassFactory {
        Factory(FaultySampleGrabber::Method refused, HRESULT refusal) : refused(refused), refusal(refusal) {}

        FaultySampleGrabber::Method refused;
        HRESULT refusal;
        long made = 0;

        STDMETHODIMP CreateInstance(IUnknown *outer, REFIID iid, void **out) override;
    };

    Factory m_factory;
    // Revoked before the factory goes.
    ScopedClassRegistration m_registration;
};

} // namespace test
} // namespace sorvane
