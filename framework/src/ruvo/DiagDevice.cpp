#include <ruvo/DiagDevice.h>

namespace ruvo {

DiagDevice::DiagDevice() {}

DiagDevice::DiagDevice(const kel::String &name, const kel::String &description, const kel::String &osLocator,
                       const DeviceCapability &capabilities)
    : m_name(name), m_description(description), m_osLocator(osLocator), m_capabilities(capabilities)
{
}

kel::String DiagDevice::name() const
{
    return m_name;
}
kel::String DiagDevice::description() const
{
    return m_description;
}
kel::String DiagDevice::osLocator() const
{
    return m_osLocator;
}

Value DiagDevice::property(const RuvoString &key) const
{
    Value value;
    m_properties.get(key.toKELString(), value);
    return value;
}

DeviceCapability DiagDevice::deviceCapabilities() const
{
    return m_capabilities;
}

bool DiagDevice::intersectCapability(const DeviceCapability &capability) const
{
    return m_capabilities.intersects(capability);
}

void DiagDevice::setProperty(const RuvoString &key, const Value &value)
{
    m_properties.put(key.toKELString(), value);
}

const kel::OrderedHashTable<kel::String, Value> &DiagDevice::properties() const
{
    return m_properties;
}

} // namespace ruvo
