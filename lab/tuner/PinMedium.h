// The medium of a pin of a card whose parts are separate filters (a tuner above its capture
// filter): pins joined on the card report the same medium, which is how the capture graph
// builder finds the filter to connect upstream. Answered through the pin's IKsPropertySet, in
// the kernel-streaming pin property set, one REGPINMEDIUM.
#pragma once

#include <windows.h>
#include <dshow.h>
#include <string>

namespace lab {

// The kernel-streaming pin property set and its mediums property.
constexpr GUID kKsPinPropertySet = {0x8c134960, 0x51ad, 0x11cf, {0x87, 0x8a, 0x94, 0xf8, 0x01, 0xc1, 0x00, 0x00}};
constexpr DWORD kPinMediumsProperty = 6;

class PinMedium {
public:
    // The medium named by its GUID text; an empty or unreadable text is no medium.
    static PinMedium parse(const std::wstring &text);
    // The medium `pin` reports; no medium when it reports none.
    static PinMedium of(IPin *pin);

    bool present() const { return m_present; }
    bool sameAs(const PinMedium &other) const;

    // IKsPropertySet::Get for a pin that has this medium (E_PROP_SET_UNSUPPORTED for other sets).
    HRESULT get(REFGUID set, DWORD id, LPVOID data, DWORD dataSize, DWORD *returned) const;
    HRESULT querySupported(REFGUID set, DWORD id, DWORD *support) const;

private:
    REGPINMEDIUM m_medium = {};
    bool m_present = false;
};

} // namespace lab
