#include <ruvo/Event.h>
#include <ruvo/MessageCatalog.h>

namespace ruvo {

Event::Event(const RuvoString &key) : m_key(key) {}

Event &Event::setVariable(const RuvoString &name, const Value &value)
{
    m_variables.set(name, value);
    return *this;
}

RuvoString Event::key() const
{
    return m_key;
}
const Variables &Event::variables() const
{
    return m_variables;
}

RuvoString Event::localizedMessage() const
{
    return RuvoString(m_variables.substitute(MessageCatalog::text(m_key.toKELString())));
}

} // namespace ruvo
