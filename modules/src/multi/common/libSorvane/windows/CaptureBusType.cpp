#include "CaptureBusType.h"
#include "FixedMember.h"

namespace sorvane {

SORVANE_FIXED_MEMBER(CaptureBusType, NOTSET, L"NOTSET", true)
SORVANE_FIXED_MEMBER(CaptureBusType, ALL, L"ALL", true)
SORVANE_FIXED_MEMBER(CaptureBusType, PCI, L"PCI", false)
SORVANE_FIXED_MEMBER(CaptureBusType, USB, L"USB", false)
SORVANE_FIXED_MEMBER(CaptureBusType, PCMCIA, L"PCMCIA", false)

CaptureBusType::CaptureBusType() : m_placeHolder(false) {}

CaptureBusType::CaptureBusType(const kel::String &name, bool placeHolder) : m_name(name), m_placeHolder(placeHolder) {}

} // namespace sorvane
