#include <ruvo/Parameter.h>

namespace ruvo {

Parameter::Parameter(const RuvoString &key, DataType::Type type, const RuvoString &description, bool flagA, bool flagB)
    : m_key(key), m_type(type), m_description(description), m_flagA(flagA), m_flagB(flagB), m_isset(false)
{
}

bool Parameter::isset() const
{
    return m_isset;
}
Value Parameter::value() const
{
    return m_value;
}
RuvoString Parameter::key() const
{
    return m_key;
}
DataType::Type Parameter::type() const
{
    return m_type;
}
RuvoString Parameter::description() const
{
    return m_description;
}
bool Parameter::flagA() const
{
    return m_flagA;
}
bool Parameter::flagB() const
{
    return m_flagB;
}

bool Parameter::set(const Value &value)
{
    if (value.type() != m_type)
        return false;
    m_value = value;
    m_isset = true;
    return true;
}

void Parameter::unset()
{
    m_value = Value();
    m_isset = false;
}

} // namespace ruvo
