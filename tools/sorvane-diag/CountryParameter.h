// The "Country" parameter as the host checks and settles it before a DVB-T scan: a value the
// library cannot use is refused with the form it takes, and a country the library would ask
// for in a dialog nobody can see is asked for at the terminal instead.
#pragma once

#include "TerminalChoice.h"

#include <ruvo/TestResult.h>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class CommandContext;

class CountryParameter {
public:
    // The value set; empty when unset.
    static std::wstring value();
    // True when the library will look for a country itself (unset, empty or "UserDefined").
    static bool leftToLibrary();
    // Why the value set cannot be used (not a country's code, or a country the DVB-T network
    // provider has no channels for); empty when it can.
    static std::wstring problem();
    // How a person chooses a country, as a sentence.
    static std::wstring howToChoose();
    // The countries whose channels the DVB-T network provider knows, by their two-letter code
    // in capitals (all of them when it cannot say).
    static std::vector<TerminalChoice::Option> countries();
    // Asks at the terminal and sets the parameter: PASS, USERABORTED on Ctrl+C, MISCONFIGURED
    // when the input ends without an answer.
    static ruvo::TestResult askAtTerminal(CommandContext &context);

private:
    // The code of the country whose name holds `name` (any case); empty when none or several.
    static std::wstring codeForName(const std::wstring &name);
    static void set(CommandContext &context, const std::wstring &code);
};

} // namespace diag
} // namespace sorvane
