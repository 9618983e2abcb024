// A question asked at the terminal in place of a box on a screen: its lines, the answers a
// person may type (each by a letter or a word, or as a reading decides), and a wait for one
// of them with a time limit. Ctrl+C answers it with its stop answer. While it waits, the
// progress bar stays away, so nothing is drawn over the question or over what is being typed.
// The one place where the host reads an answer at the terminal.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class Terminal;

class TerminalQuestion {
public:
    enum Outcome { ANSWERED, STOPPED, NO_ANSWER };

    // What a typed line answers: true with the answer, or false with what to say before the
    // question waits again.
    typedef std::function<bool(const std::wstring &typed, int &answer, std::wstring &again)> Reading;

    // Answered by the answers added (addAnswer).
    explicit TerminalQuestion(Terminal &terminal);
    // Answered as `reading` decides.
    TerminalQuestion(Terminal &terminal, const Reading &reading);
    ~TerminalQuestion();
    TerminalQuestion(const TerminalQuestion &) = delete;
    TerminalQuestion &operator=(const TerminalQuestion &) = delete;

    // An answer typed as `letter` or `word` (any case, blanks ignored), returned as `value`.
    void addAnswer(const std::wstring &letter, const std::wstring &word, int value);
    // The answer Ctrl+C gives.
    void setStopAnswer(int value);

    // Shows the lines, then one that lists the answers ("Type r and Enter to retry, or a and
    // Enter to abort the test." is given by the caller as its last line).
    void show(const std::vector<std::wstring> &lines);
    // Waits for an answer (`milliseconds` 0: without limit); a line that is none of the
    // answers is asked again. STOPPED gives the stop answer in `answer`.
    Outcome wait(uint32_t milliseconds, int &answer);

private:
    struct Answer {
        std::wstring letter;
        std::wstring word;
        int value;
    };
    bool match(const std::wstring &typed, int &answer, std::wstring &again) const;
    std::wstring choices() const;
    void close();

    Terminal &m_terminal;
    Reading m_reading;
    std::vector<Answer> m_answers;
    int m_stopAnswer;
    bool m_open;
};

} // namespace diag
} // namespace sorvane
