// The country table: records by two-letter key and by position in the fixed order the
// country dialog lists them. Built in full by each instance; the records die with it.
#pragma once

#include "CountryCode.h"
#include "SorvaneExport.h"
#include <kel/OrderedHashTable.h>
#include <kel/String.h>

namespace sorvane {

class SORVANE_API CountryCodeManager {
public:
    CountryCodeManager();
    ~CountryCodeManager();
    CountryCodeManager(const CountryCodeManager &) = delete;
    CountryCodeManager &operator=(const CountryCodeManager &) = delete;

    // Exact, case-sensitive match ("de", not "DE"); null for an unknown key.
    const CountryCode *countryCodeByString(const kel::String &key) const;
    int countryCodeCount() const;
    // An index outside 0 .. countryCodeCount() - 1 is an assertion failure.
    const CountryCode *countryCodeAtIndex(int index) const;

private:
    // The first record under a key wins; a later one is dropped.
    void insert(const kel::String &name, const kel::String &key, int code, const AnalogStandard &standard,
                int language);

    kel::OrderedHashTable<kel::String, CountryCode *> m_codes;
};

} // namespace sorvane
