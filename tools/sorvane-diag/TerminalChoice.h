// A question a person answers at the terminal by choosing one of a list: by its code or by its
// name (any case; a part of exactly one name will do). For what the library would ask in a
// window that nobody can see. Asked and read as every terminal question is (TerminalQuestion):
// Ctrl+C ends the wait.
#pragma once

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class Terminal;

class TerminalChoice {
public:
    struct Option {
        std::wstring code;
        std::wstring name;
    };
    enum class Outcome { CHOSEN, STOPPED, ENDED };

    TerminalChoice(Terminal &terminal, const std::vector<Option> &options);

    // Lists the options and asks `question` until an answer names one; `chosen` is its index.
    Outcome ask(const std::wstring &question, size_t &chosen);
    // The option `typed` names, or -1 with `problem` saying why not.
    static int match(const std::vector<Option> &options, const std::wstring &typed, std::wstring &problem);

private:
    // The options in columns, one line a row.
    std::vector<std::wstring> listed() const;

    Terminal &m_terminal;
    std::vector<Option> m_options;
};

} // namespace diag
} // namespace sorvane
