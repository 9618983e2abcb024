#include "EventVariables.h"
#include "CountryParameter.h"

#include <CountryCodeManager.h>

namespace sorvane {
namespace diag {

ruvo::PostedEvent EventVariables::completed(const ruvo::PostedEvent &event)
{
    ruvo::PostedEvent result = event;
    const std::wstring text = event.message.wstr();
    size_t at = 0;
    while ((at = text.find(L'{', at)) != std::wstring::npos) {
        const size_t end = text.find(L'}', at);
        if (end == std::wstring::npos)
            break;
        const std::wstring name = text.substr(at + 1, end - at - 1);
        ruvo::Value known;
        if (!name.empty() && !result.variables.get(kel::String(name), known))
            result.variables.set(ruvo::RuvoString(kel::String(name)), ruvo::Value(kel::String(hostValue(name))));
        at = end + 1;
    }
    result.message = result.variables.substitute(event.message);
    return result;
}

std::wstring EventVariables::hostValue(const std::wstring &name)
{
    if (name == L"CountryName") {
        const std::wstring set = CountryParameter::value();
        if (CountryParameter::leftToLibrary())
            return L"no country (Country is " + (set.empty() ? std::wstring(L"not set") : L"\"" + set + L"\"") +
                   L" and none was chosen)";
        const CountryCodeManager table;
        const CountryCode *country = table.countryCodeByString(kel::String(set).toLower());
        return country ? country->name().wstr() : L"\"" + set + L"\"";
    }
    return L"(not given by the library)";
}

} // namespace diag
} // namespace sorvane
