// The pins that join the separate filters of a card through a medium: the tuner filter's
// analog video output and the capture filter's analog video input. Like the kernel-streaming
// bridges of a real card they carry no samples in the lab; they report their medium
// (PinMedium) through IKsPropertySet.
#pragma once

#include "bdadevice/LinkInputPin.h"
#include "common/OutputPin.h"
#include "tuner/PinMedium.h"

namespace lab {

class MediumOutputPin : public OutputPin {
public:
    MediumOutputPin(BaseFilter &filter, const std::wstring &name, const GUID &majorType);

    void setMedium(const PinMedium &medium) { m_medium = medium; }

    std::vector<MediaType> mediaTypes() override;
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;
    STDMETHODIMP Get(REFGUID set, DWORD id, LPVOID instance, DWORD instanceSize, LPVOID data, DWORD dataSize,
                     DWORD *returned) override;
    STDMETHODIMP QuerySupported(REFGUID set, DWORD id, DWORD *support) override;

protected:
    void *queryExtra(REFIID iid) override;
    long bufferSize() override { return 1; }

private:
    const GUID m_majorType;
    PinMedium m_medium;
};

class MediumInputPin : public LinkInputPin, public IKsPropertySet {
public:
    MediumInputPin(BaseFilter &filter, const std::wstring &name, const GUID &majorType);

    void setMedium(const PinMedium &medium) { m_medium = medium; }

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return LinkInputPin::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return LinkInputPin::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return LinkInputPin::Release(); }
    STDMETHODIMP Set(REFGUID set, DWORD id, LPVOID instance, DWORD instanceSize, LPVOID data, DWORD dataSize) override;
    STDMETHODIMP Get(REFGUID set, DWORD id, LPVOID instance, DWORD instanceSize, LPVOID data, DWORD dataSize,
                     DWORD *returned) override;
    STDMETHODIMP QuerySupported(REFGUID set, DWORD id, DWORD *support) override;

protected:
    void *queryExtra(REFIID iid) override;

private:
    PinMedium m_medium;
};

} // namespace lab
