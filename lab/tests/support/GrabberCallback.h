// The COM identity of the lab tests' sample-grabber callbacks: IUnknown and ISampleGrabberCB,
// reference counted, deleted with its last reference. Derived classes keep what they see.
#pragma once

#include <windows.h>
#include <dshow.h>
#include <qedit.h>

namespace labtest {

class GrabberCallback : public ISampleGrabberCB {
public:
    GrabberCallback() = default;
    virtual ~GrabberCallback() = default;
    GrabberCallback(const GrabberCallback &) = delete;
    GrabberCallback &operator=(const GrabberCallback &) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

private:
    volatile LONG m_refs = 0;
};

} // namespace labtest
