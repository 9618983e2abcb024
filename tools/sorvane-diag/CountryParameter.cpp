#include "CountryParameter.h"
#include "CommandContext.h"
#include "RunReport.h"
#include "Terminal.h"

#include <CountryCodeManager.h>
#include <ModuleRegistration.h>

#include <atlbase.h>
#include <bdaiface.h>
#include <uuids.h>

#include <algorithm>

namespace sorvane {
namespace diag {

namespace {

const wchar_t *const kUserDefined = L"UserDefined";

std::wstring upper(const kel::String &text)
{
    return text.toUpper().wstr();
}

// The country codes whose channels the system's DVB-T network provider knows, as the library
// lists them in its dialog; empty when the provider cannot say.
std::vector<int> providerCountryCodes()
{
    std::vector<int> codes;
    const HRESULT init = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
        CComPtr<IFrequencyMap> map;
        ULONG count = 0;
        ULONG *list = nullptr;
        if (SUCCEEDED(map.CoCreateInstance(CLSID_DVBTNetworkProvider, nullptr, CLSCTX_INPROC_SERVER)) &&
            SUCCEEDED(map->get_CountryCodeList(&count, &list)) && list) {
            for (ULONG i = 0; i < count; ++i)
                codes.push_back(static_cast<int>(list[i]));
        }
        CoTaskMemFree(list);
    }
    if (SUCCEEDED(init))
        CoUninitialize();
    return codes;
}

bool provided(const std::vector<int> &codes, int code)
{
    return codes.empty() || std::find(codes.begin(), codes.end(), code) != codes.end();
}

} // namespace

std::wstring CountryParameter::value()
{
    return g_country->isset() ? g_country->value().toKELString().wstr() : std::wstring();
}

bool CountryParameter::leftToLibrary()
{
    const std::wstring set = value();
    return set.empty() || set == kUserDefined;
}

std::wstring CountryParameter::problem()
{
    if (leftToLibrary())
        return std::wstring();
    const CountryCodeManager table;
    const CountryCode *known = table.countryCodeByString(kel::String(value()).toLower());
    if (known && provided(providerCountryCodes(), known->countryCode()))
        return std::wstring();
    if (known)
        return L"The country " + upper(known->key()) + L" (" + known->name().wstr() +
               L") was not accepted: this system's DVB-T network provider has no channel list for it, so the "
               L"scan could not tune. --interactive lists the countries it has.";
    const std::wstring named = codeForName(value());
    const CountryCode *country = named.empty() ? nullptr : table.countryCodeByString(kel::String(named).toLower());
    const std::wstring hint = country ? L" (for " + country->name().wstr() + L": --set Country=" + named + L")"
                                      : std::wstring(L" (DE for Germany, US for the USA ...)");
    return L"The country \"" + value() + L"\" was not accepted: Country takes a country's two-letter code, any case" +
           hint + L", or UserDefined to choose from a list with --interactive. `sorvane-diag dvbt --help` says more.";
}

std::wstring CountryParameter::howToChoose()
{
    return L"Choose the country with --set Country=CODE (its two-letter code, as DE or US), or with --interactive "
           L"from a list.";
}

std::vector<TerminalChoice::Option> CountryParameter::countries()
{
    const CountryCodeManager table;
    const std::vector<int> codes = providerCountryCodes();
    std::vector<TerminalChoice::Option> options;
    for (int i = 0; i < table.countryCodeCount(); ++i) {
        const CountryCode *country = table.countryCodeAtIndex(i);
        if (!provided(codes, country->countryCode()))
            continue;
        TerminalChoice::Option option = {upper(country->key()), country->name().wstr()};
        options.push_back(option);
    }
    return options;
}

std::wstring CountryParameter::codeForName(const std::wstring &name)
{
    std::wstring problem;
    const CountryCodeManager table;
    std::vector<TerminalChoice::Option> options;
    for (int i = 0; i < table.countryCodeCount(); ++i) {
        const TerminalChoice::Option option = {upper(table.countryCodeAtIndex(i)->key()),
                                               table.countryCodeAtIndex(i)->name().wstr()};
        options.push_back(option);
    }
    const int index = TerminalChoice::match(options, name, problem);
    return index < 0 ? std::wstring() : options[static_cast<size_t>(index)].code;
}

ruvo::TestResult CountryParameter::askAtTerminal(CommandContext &context)
{
    context.terminal().line(L"The library would ask for the country in a window, but there is no display to "
                            L"show it in: choose the country here.");
    const std::vector<TerminalChoice::Option> options = countries();
    TerminalChoice choice(context.terminal(), options);
    size_t chosen = 0;
    switch (choice.ask(L"Type the country's code or name, then Enter (Ctrl+C stops):", chosen)) {
    case TerminalChoice::Outcome::CHOSEN:
        set(context, options[chosen].code);
        return ruvo::TestResult::PASS();
    case TerminalChoice::Outcome::STOPPED:
        context.say(L"Stopped before a country was chosen: the scan did not run.");
        return ruvo::TestResult::USERABORTED();
    case TerminalChoice::Outcome::ENDED:
        break;
    }
    context.say(L"No country was chosen (the input ended), so the scan did not run. " + howToChoose());
    return ruvo::TestResult::MISCONFIGURED();
}

void CountryParameter::set(CommandContext &context, const std::wstring &code)
{
    ruvo::Value typed;
    if (!ruvo::Value::parse(g_country->type(), kel::String(code), typed))
        return;
    g_country->set(typed);
    context.report().addParameter(L"Country", code);
    const CountryCodeManager table;
    const CountryCode *country = table.countryCodeByString(kel::String(code).toLower());
    context.terminal().line(L"Country is set to " + code +
                            (country ? L" (" + country->name().wstr() + L")" : std::wstring()) + L".");
}

} // namespace diag
} // namespace sorvane
