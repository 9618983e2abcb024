#pragma once

#include <ruvo/DeviceCapability.h>
#include <ruvo/Value.h>
#include <kel/OrderedHashTable.h>

namespace ruvo {

// The framework's record of a device under test.
class RUVO_API DiagDevice {
public:
    DiagDevice();
    DiagDevice(const kel::String &name, const kel::String &description, const kel::String &osLocator,
               const DeviceCapability &capabilities);

    kel::String name() const;
    kel::String description() const;
    kel::String osLocator() const;
    // A named property the enumerator recorded; an empty value when there is none.
    Value property(const RuvoString &key) const;
    DeviceCapability deviceCapabilities() const;
    bool intersectCapability(const DeviceCapability &capability) const;

    void setProperty(const RuvoString &key, const Value &value);
    const kel::OrderedHashTable<kel::String, Value> &properties() const;

private:
    kel::String m_name;
    kel::String m_description;
    kel::String m_osLocator;
    DeviceCapability m_capabilities;
    kel::OrderedHashTable<kel::String, Value> m_properties;
};

} // namespace ruvo
