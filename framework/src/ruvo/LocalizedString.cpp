#include <ruvo/LocalizedString.h>
#include <ruvo/MessageCatalog.h>

namespace ruvo {

LocalizedString::LocalizedString(const RuvoString &key) : m_key(key) {}

LocalizedString &LocalizedString::setVariable(const RuvoString &name, const Value &value)
{
    m_variables.set(name, value);
    return *this;
}

RuvoString LocalizedString::key() const
{
    return m_key;
}
const Variables &LocalizedString::variables() const
{
    return m_variables;
}

RuvoString LocalizedString::localizedString() const
{
    return RuvoString(m_variables.substitute(MessageCatalog::text(m_key.toKELString())));
}

} // namespace ruvo
