#pragma once

#include <ruvo/Value.h>

namespace ruvo {

// A run-time parameter the framework hands to test modules. Created only by
// DiagModule::createParameter; set by the host from its configuration.
class RUVO_API Parameter {
public:
    Parameter(const RuvoString &key, DataType::Type type, const RuvoString &description, bool flagA, bool flagB);

    bool isset() const;
    Value value() const;
    RuvoString key() const;
    DataType::Type type() const;
    RuvoString description() const;
    bool flagA() const;
    bool flagB() const;

    // Host side. set() refuses a value whose type is not the declared one.
    bool set(const Value &value);
    void unset();

private:
    RuvoString m_key;
    DataType::Type m_type;
    RuvoString m_description;
    bool m_flagA;
    bool m_flagB;
    bool m_isset;
    Value m_value;
};

} // namespace ruvo
