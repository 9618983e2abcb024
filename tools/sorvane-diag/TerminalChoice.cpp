#include "TerminalChoice.h"
#include "TerminalQuestion.h"

#include <kel/String.h>

namespace sorvane {
namespace diag {

namespace {

const size_t kColumns = 3;
const size_t kColumnWidth = 26;

std::wstring folded(const std::wstring &text)
{
    return kel::String(text).toLower().wstr();
}

std::wstring trimmed(const std::wstring &text)
{
    const size_t begin = text.find_first_not_of(L" \t");
    if (begin == std::wstring::npos)
        return std::wstring();
    return text.substr(begin, text.find_last_not_of(L" \t") - begin + 1);
}

} // namespace

TerminalChoice::TerminalChoice(Terminal &terminal, const std::vector<Option> &options)
    : m_terminal(terminal), m_options(options)
{
}

TerminalChoice::Outcome TerminalChoice::ask(const std::wstring &question, size_t &chosen)
{
    TerminalQuestion asked(m_terminal, [this](const std::wstring &typed, int &answer, std::wstring &again) {
        answer = match(m_options, typed, again);
        return answer >= 0;
    });
    std::vector<std::wstring> lines = listed();
    lines.push_back(question);
    asked.show(lines);
    int answer = -1;
    switch (asked.wait(0, answer)) {
    case TerminalQuestion::ANSWERED:
        chosen = static_cast<size_t>(answer);
        return Outcome::CHOSEN;
    case TerminalQuestion::STOPPED:
        return Outcome::STOPPED;
    case TerminalQuestion::NO_ANSWER:
        break;
    }
    return Outcome::ENDED;
}

int TerminalChoice::match(const std::vector<Option> &options, const std::wstring &typed, std::wstring &problem)
{
    const std::wstring wanted = folded(trimmed(typed));
    if (wanted.empty()) {
        problem = L"Please type a code or a name from the list.";
        return -1;
    }
    std::vector<int> partial;
    for (size_t i = 0; i < options.size(); ++i) {
        if (folded(options[i].code) == wanted || folded(options[i].name) == wanted)
            return static_cast<int>(i);
        if (folded(options[i].name).find(wanted) != std::wstring::npos)
            partial.push_back(static_cast<int>(i));
    }
    if (partial.size() == 1)
        return partial[0];
    if (partial.empty()) {
        problem = L"\"" + trimmed(typed) + L"\" is not in the list: type a code or a name from it.";
        return -1;
    }
    problem = L"\"" + trimmed(typed) + L"\" fits " + std::to_wstring(partial.size()) + L" entries (";
    for (size_t i = 0; i < partial.size() && i < 4; ++i)
        problem += (i ? L", " : L"") + options[static_cast<size_t>(partial[i])].name;
    problem +=
        partial.size() > 4 ? L" ...): give more of the name or the code." : L"): give more of the name or the code.";
    return -1;
}

std::vector<std::wstring> TerminalChoice::listed() const
{
    std::vector<std::wstring> rows;
    std::wstring row;
    for (size_t i = 0; i < m_options.size(); ++i) {
        std::wstring cell = m_options[i].code + L"  " + m_options[i].name;
        if (cell.size() > kColumnWidth - 1)
            cell = cell.substr(0, kColumnWidth - 2) + L"~";
        const bool last = (i + 1) % kColumns == 0 || i + 1 == m_options.size();
        row += last ? cell : cell + std::wstring(kColumnWidth - cell.size(), L' ');
        if (last) {
            rows.push_back(L"  " + row);
            row.clear();
        }
    }
    return rows;
}

} // namespace diag
} // namespace sorvane
