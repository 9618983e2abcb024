#include "SetupApiEnumType.h"
#include "NamedMemberLookup.h"

namespace sorvane {

#define SORVANE_ENUMTYPE(member, name, placeHolder)                          \
    const SetupApiEnumType& SetupApiEnumType::member()                       \
    {                                                                        \
        static const SetupApiEnumType value(name, placeHolder);              \
        return value;                                                        \
    }

SORVANE_ENUMTYPE(NOTSET, L"NOTSET", true)
SORVANE_ENUMTYPE(ALL, L"ALL", true)
SORVANE_ENUMTYPE(ACPI, L"ACPI", false)
SORVANE_ENUMTYPE(ACPI_HAL, L"ACPI_HAL", false)
SORVANE_ENUMTYPE(DISPLAY, L"DISPLAY", false)
SORVANE_ENUMTYPE(FDC, L"FDC", false)
SORVANE_ENUMTYPE(HTREE, L"HTREE", false)
SORVANE_ENUMTYPE(IDE, L"IDE", false)
SORVANE_ENUMTYPE(ISAPNP, L"ISAPNP", false)
SORVANE_ENUMTYPE(LPTENUM, L"LPTENUM", false)
SORVANE_ENUMTYPE(PCI, L"PCI", false)
SORVANE_ENUMTYPE(PCIIDE, L"PCIIDE", false)
SORVANE_ENUMTYPE(ROOT, L"ROOT", false)
SORVANE_ENUMTYPE(STORAGE, L"STORAGE", false)
SORVANE_ENUMTYPE(SW, L"SW", false)
SORVANE_ENUMTYPE(USB, L"USB", false)
SORVANE_ENUMTYPE(USBSTOR, L"USBSTOR", false)
SORVANE_ENUMTYPE(V1394, L"V1394", false)

#undef SORVANE_ENUMTYPE

namespace {

typedef NamedMemberLookup<SetupApiEnumType>::Member Member;

// Every enumerator a device can be looked up by; the placeholders are deliberately absent.
const Member kLookupMembers[] = {
    &SetupApiEnumType::ACPI, &SetupApiEnumType::ACPI_HAL, &SetupApiEnumType::DISPLAY,
    &SetupApiEnumType::FDC, &SetupApiEnumType::HTREE, &SetupApiEnumType::IDE,
    &SetupApiEnumType::ISAPNP, &SetupApiEnumType::LPTENUM, &SetupApiEnumType::PCI,
    &SetupApiEnumType::PCIIDE, &SetupApiEnumType::ROOT, &SetupApiEnumType::STORAGE,
    &SetupApiEnumType::SW, &SetupApiEnumType::USB, &SetupApiEnumType::USBSTOR,
    &SetupApiEnumType::V1394,
};

} // namespace

const SetupApiEnumType& SetupApiEnumType::fromString(const kel::String& text)
{
    static const NamedMemberLookup<SetupApiEnumType> lookup(kLookupMembers);
    return lookup.find(text, NOTSET());
}

SetupApiEnumType::SetupApiEnumType() : m_placeHolder(false) {}

SetupApiEnumType::SetupApiEnumType(const kel::String& name, bool placeHolder)
    : m_name(name), m_placeHolder(placeHolder)
{
}

// No blank after the colon, unlike SetupApiDevType: listings have always printed it so.
kel::String SetupApiEnumType::toString() const
{
    return m_name + L" PlaceHolder:" + kel::String::fromBool(m_placeHolder);
}

} // namespace sorvane
