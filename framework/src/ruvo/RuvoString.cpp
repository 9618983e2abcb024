#include <ruvo/RuvoString.h>

namespace ruvo {

RuvoString::RuvoString() {}
RuvoString::RuvoString(const char *narrow) : m_text(narrow) {}
RuvoString::RuvoString(const wchar_t *text) : m_text(text) {}
RuvoString::RuvoString(const kel::String &text) : m_text(text) {}

kel::String RuvoString::toKELString() const
{
    return m_text;
}
const wchar_t *RuvoString::c_str() const
{
    return m_text.c_str();
}
bool RuvoString::isEmpty() const
{
    return m_text.isEmpty();
}
bool RuvoString::operator==(const RuvoString &other) const
{
    return m_text == other.m_text;
}
bool RuvoString::operator!=(const RuvoString &other) const
{
    return m_text != other.m_text;
}

} // namespace ruvo
