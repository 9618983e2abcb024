// One row of the country table: display name, two-letter key, the country code that the
// tuning interfaces take, the analog TV standard and a Windows language identifier.
#pragma once

#include "AnalogStandard.h"
#include "SorvaneExport.h"
#include <kel/String.h>

namespace sorvane {

class SORVANE_API CountryCode {
public:
    CountryCode();

    kel::String name() const { return m_name; }
    // There is no separate translation: the stored name already carries the native name.
    kel::String localizedName() const { return m_name; }
    const kel::String &key() const { return m_key; }
    int countryCode() const { return m_code; }
    const AnalogStandard &standard() const { return m_standard; }
    int language() const { return m_language; }

private:
    friend class CountryCodeManager;
    CountryCode(const kel::String &name, const kel::String &key, int code, const AnalogStandard &standard,
                int language);

    kel::String m_name;
    kel::String m_key;
    int m_code;
    AnalogStandard m_standard;
    int m_language;
};

} // namespace sorvane
