#include "CaptureBusType.h"

namespace sorvane {

const CaptureBusType& CaptureBusType::NOTSET()
{
    static const CaptureBusType value(L"NOTSET", true);
    return value;
}

const CaptureBusType& CaptureBusType::ALL()
{
    static const CaptureBusType value(L"ALL", true);
    return value;
}

const CaptureBusType& CaptureBusType::PCI()
{
    static const CaptureBusType value(L"PCI", false);
    return value;
}

const CaptureBusType& CaptureBusType::USB()
{
    static const CaptureBusType value(L"USB", false);
    return value;
}

const CaptureBusType& CaptureBusType::PCMCIA()
{
    static const CaptureBusType value(L"PCMCIA", false);
    return value;
}

CaptureBusType::CaptureBusType() : m_placeHolder(false) {}

CaptureBusType::CaptureBusType(const kel::String& name, bool placeHolder)
    : m_name(name), m_placeHolder(placeHolder)
{
}

} // namespace sorvane
