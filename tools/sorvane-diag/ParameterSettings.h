// The framework parameters a person sets on the command line, typed by the type each
// parameter was declared with.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace sorvane {
namespace diag {

class ParameterSettings {
public:
    // Sets each KEY=VALUE. An unknown key, or a value that does not parse as the key's
    // declared type, throws UsageError with the BADPARAMS exit status, naming the key and
    // the type expected; nothing is set then.
    static void apply(const std::vector<std::pair<std::wstring, std::wstring>> &settings);
    // Every declared parameter with its type, one a line, for --help.
    static std::wstring declaredHelp();
};

} // namespace diag
} // namespace sorvane
