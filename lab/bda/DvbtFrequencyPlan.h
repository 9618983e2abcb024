// The DVB-T frequency tables of the DVB-T network provider's IFrequencyMap, one per country
// (portable, no DirectShow). Countries are named by their telephone-style country code, as
// Windows' tuning interfaces name them (44 United Kingdom, 49 Germany, 61 Australia ...).
// Frequencies are channel centres in kHz, in channel order: the 8 MHz UHF channels 21-69
// (474000-858000 kHz) in most of Europe, with the 7 MHz VHF band III channels 5-12
// (177500-226500 kHz) first where a country broadcasts DVB-T there (Germany, Austria,
// Switzerland, Sweden ...); Australia's 7 MHz VHF channels 6-12 and UHF channels 28-69.
#pragma once

#include <vector>

namespace lab {

class DvbtFrequencyPlan {
public:
    // Country codes with a table, in ascending order.
    static std::vector<unsigned long> countryCodes();
    // The country's table; false for a country without one.
    static bool frequencies(unsigned long countryCode, std::vector<unsigned long> &kilohertz);
};

} // namespace lab
