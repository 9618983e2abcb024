// The framework's side of a test run, played for a person at a terminal: events become
// sentences, progress becomes a bar, stop requests come from Ctrl+C and questions are
// asked at the prompt (only with --interactive). Everything is also kept for the report.
#pragma once

#include "TerminalQuestion.h"
#include "WaitNote.h"

#include <ruvo/DiagBackend.h>

#include <memory>

namespace sorvane {
namespace diag {

class RunReport;
class Terminal;

class TerminalBackend : public ruvo::DiagBackend {
public:
    // The answers a person can give to the framework's questions, as the framework's
    // message box returns them: retry (check again) or abort the test.
    static const int RETRY_ANSWER = 4;
    static const int ABORT_ANSWER = 5;

    TerminalBackend(Terminal &terminal, RunReport &report, bool interactive);

    void eventPosted(const ruvo::PostedEvent &posted) override;
    void progress(const kel::String &text) override;
    void percentDone(int percent) override;
    void resetPercentDone() override;
    bool checkForStop() override;
    bool promptEnabled() override;
    bool displayMessageBox(ruvo::MessageBox2 &box) override;
    bool waitMessageBox(ruvo::MessageBox2 &box, uint32_t milliseconds) override;

private:
    Terminal &m_terminal;
    RunReport &m_report;
    bool m_interactive;
    bool m_hasPercent;
    int m_percent;
    bool m_hasText;
    std::wstring m_text;
    // Shown instead of a text while the library reports only a percentage.
    WaitNote m_wait;
    std::wstring m_note;
    int m_attempts;
    // The question a message box asks, from its display to its answer.
    std::unique_ptr<TerminalQuestion> m_question;
};

} // namespace diag
} // namespace sorvane
