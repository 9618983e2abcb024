#include "TerminalQuestion.h"
#include "PromptReader.h"
#include "StopRequest.h"
#include "Terminal.h"

#include <cwctype>

namespace sorvane {
namespace diag {

TerminalQuestion::TerminalQuestion(Terminal &terminal) : m_terminal(terminal), m_stopAnswer(0), m_open(false)
{
    m_reading = [this](const std::wstring &typed, int &answer, std::wstring &again) {
        return match(typed, answer, again);
    };
}

TerminalQuestion::TerminalQuestion(Terminal &terminal, const Reading &reading)
    : m_terminal(terminal), m_reading(reading), m_stopAnswer(0), m_open(false)
{
}

TerminalQuestion::~TerminalQuestion()
{
    close();
}

void TerminalQuestion::addAnswer(const std::wstring &letter, const std::wstring &word, int value)
{
    Answer answer = {letter, word, value};
    m_answers.push_back(answer);
}

void TerminalQuestion::setStopAnswer(int value)
{
    m_stopAnswer = value;
}

void TerminalQuestion::show(const std::vector<std::wstring> &lines)
{
    m_terminal.beginQuestion();
    m_open = true;
    for (const std::wstring &line : lines)
        m_terminal.line(line);
}

TerminalQuestion::Outcome TerminalQuestion::wait(uint32_t milliseconds, int &answer)
{
    std::wstring typed;
    Outcome outcome = NO_ANSWER;
    while (PromptReader::instance().readLine(typed, milliseconds)) {
        std::wstring again;
        if (m_reading(typed, answer, again)) {
            outcome = ANSWERED;
            break;
        }
        m_terminal.line(again);
    }
    if (outcome == NO_ANSWER && StopRequest::requested()) {
        answer = m_stopAnswer;
        outcome = STOPPED;
    }
    close();
    return outcome;
}

bool TerminalQuestion::match(const std::wstring &typed, int &answer, std::wstring &again) const
{
    std::wstring word;
    for (const wchar_t c : typed) {
        if (!iswspace(c))
            word += static_cast<wchar_t>(towlower(c));
    }
    for (const Answer &candidate : m_answers) {
        if (word == candidate.letter || word == candidate.word) {
            answer = candidate.value;
            return true;
        }
    }
    again = L"Please type " + choices() + L".";
    return false;
}

// "r (retry) or a (abort)".
std::wstring TerminalQuestion::choices() const
{
    std::wstring text;
    for (size_t i = 0; i < m_answers.size(); ++i) {
        if (i > 0)
            text += i + 1 == m_answers.size() ? L" or " : L", ";
        text += m_answers[i].letter + L" (" + m_answers[i].word + L")";
    }
    return text;
}

void TerminalQuestion::close()
{
    if (!m_open)
        return;
    m_open = false;
    m_terminal.endQuestion();
}

} // namespace diag
} // namespace sorvane
