#include "CountryCode.h"

namespace sorvane {

CountryCode::CountryCode() : m_code(0), m_language(0) {}

CountryCode::CountryCode(const kel::String &name, const kel::String &key, int code, const AnalogStandard &standard,
                         int language)
    : m_name(name), m_key(key), m_code(code), m_standard(standard), m_language(language)
{
}

} // namespace sorvane
