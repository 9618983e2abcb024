#include "SetupApiEnumType.h"
#include "FixedMember.h"
#include "NamedMemberLookup.h"

namespace sorvane {

SORVANE_FIXED_MEMBER(SetupApiEnumType, NOTSET, L"NOTSET", true)
SORVANE_FIXED_MEMBER(SetupApiEnumType, ALL, L"ALL", true)
SORVANE_FIXED_MEMBER(SetupApiEnumType, ACPI, L"ACPI", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, ACPI_HAL, L"ACPI_HAL", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, DISPLAY, L"DISPLAY", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, FDC, L"FDC", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, HTREE, L"HTREE", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, IDE, L"IDE", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, ISAPNP, L"ISAPNP", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, LPTENUM, L"LPTENUM", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, PCI, L"PCI", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, PCIIDE, L"PCIIDE", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, ROOT, L"ROOT", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, STORAGE, L"STORAGE", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, SW, L"SW", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, USB, L"USB", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, USBSTOR, L"USBSTOR", false)
SORVANE_FIXED_MEMBER(SetupApiEnumType, V1394, L"V1394", false)

namespace {

typedef NamedMemberLookup<SetupApiEnumType>::Member Member;

// Every enumerator a device can be looked up by; the placeholders are deliberately absent.
const Member kLookupMembers[] = {
    &SetupApiEnumType::ACPI,  &SetupApiEnumType::ACPI_HAL, &SetupApiEnumType::DISPLAY, &SetupApiEnumType::FDC,
    &SetupApiEnumType::HTREE, &SetupApiEnumType::IDE,      &SetupApiEnumType::ISAPNP,  &SetupApiEnumType::LPTENUM,
    &SetupApiEnumType::PCI,   &SetupApiEnumType::PCIIDE,   &SetupApiEnumType::ROOT,    &SetupApiEnumType::STORAGE,
    &SetupApiEnumType::SW,    &SetupApiEnumType::USB,      &SetupApiEnumType::USBSTOR, &SetupApiEnumType::V1394,
};

} // namespace

const SetupApiEnumType &SetupApiEnumType::fromString(const kel::String &text)
{
    static const NamedMemberLookup<SetupApiEnumType> lookup(kLookupMembers);
    return lookup.find(text, NOTSET());
}

SetupApiEnumType::SetupApiEnumType() : m_placeHolder(false) {}

SetupApiEnumType::SetupApiEnumType(const kel::String &name, bool placeHolder) : m_name(name), m_placeHolder(placeHolder)
{
}

// No blank after the colon, unlike SetupApiDevType: listings have always printed it so.
kel::String SetupApiEnumType::toString() const
{
    return m_name + L" PlaceHolder:" + kel::String::fromBool(m_placeHolder);
}

} // namespace sorvane
