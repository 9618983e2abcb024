#pragma once

#include "FaultySampleGrabber.h"

namespace sorvane {
namespace test {

// While it lives, every sample grabber made on this thread's apartment is the system's with
// one ISampleGrabber method refusing (FaultySampleGrabber): a class object registered over
// CLSID_SampleGrabber, then revoked.
class SampleGrabberFault {
public:
    SampleGrabberFault(FaultySampleGrabber::Method refused, HRESULT refusal);
    ~SampleGrabberFault();
    SampleGrabberFault(const SampleGrabberFault &) = delete;
    SampleGrabberFault &operator=(const SampleGrabberFault &) = delete;

    bool active() const { return m_cookie != 0; }
    long grabbersMade() const { return m_factory.made; }

private:
    // Lives exactly as long as its registration, so its reference count is never needed.
    struct Factory : IClassFactory {
        FaultySampleGrabber::Method refused = FaultySampleGrabber::SET_MEDIA_TYPE;
        HRESULT refusal = E_FAIL;
        long made = 0;

        STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
        STDMETHODIMP_(ULONG) AddRef() override { return 2; }
        STDMETHODIMP_(ULONG) Release() override { return 1; }
        STDMETHODIMP CreateInstance(IUnknown *outer, REFIID iid, void **out) override;
        STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    };

    Factory m_factory;
    DWORD m_cookie;
};

} // namespace test
} // namespace sorvane
