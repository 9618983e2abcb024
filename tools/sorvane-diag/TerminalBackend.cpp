#include "TerminalBackend.h"
#include "EventVariables.h"
#include "LibraryErrors.h"
#include "RunReport.h"
#include "StopRequest.h"
#include "Terminal.h"

#include <ruvo/MessageBox2.h>

namespace sorvane {
namespace diag {

TerminalBackend::TerminalBackend(Terminal &terminal, RunReport &report, bool interactive)
    : m_terminal(terminal), m_report(report), m_interactive(interactive), m_hasPercent(false), m_percent(0),
      m_hasText(false), m_attempts(0)
{
}

void TerminalBackend::eventPosted(const ruvo::PostedEvent &posted)
{
    const ruvo::PostedEvent event = EventVariables::completed(posted);
    m_report.addEvent(event);
    const wchar_t *label = event.severity == ruvo::PostedEvent::ERROR_EVENT ? L"Error: " : L"Warning: ";
    m_terminal.line(label + event.message.wstr());
}

// Capture loops report progress on every turn of their message loop; only changes are
// shown and kept.
void TerminalBackend::progress(const kel::String &text)
{
    if (m_hasText && text.wstr() == m_text)
        return;
    m_hasText = true;
    m_text = text.wstr();
    LibraryErrors::setActivity(m_text);
    m_report.addProgressText(m_text);
    m_terminal.progress(m_percent, m_text);
}

void TerminalBackend::percentDone(int percent)
{
    const std::wstring note = m_hasText ? std::wstring() : m_wait.note();
    const bool samePercent = m_hasPercent && percent == m_percent;
    if (samePercent && note == m_note)
        return;
    if (!samePercent)
        m_report.addPercent(percent);
    m_hasPercent = true;
    m_percent = percent;
    m_note = note;
    m_terminal.progress(m_percent, m_hasText ? m_text : m_note);
}

void TerminalBackend::resetPercentDone()
{
    // A new attempt: its first report is kept even if the last one said the same.
    m_hasPercent = false;
    m_hasText = false;
    m_percent = 0;
    m_note.clear();
    m_wait.restart();
    m_report.addPercentReset();
    if (++m_attempts > 1)
        m_terminal.line(L"Attempt " + std::to_wstring(m_attempts) + L": the test starts again and the bar restarts.");
}

bool TerminalBackend::checkForStop()
{
    return StopRequest::requested();
}

bool TerminalBackend::promptEnabled()
{
    return m_interactive;
}

bool TerminalBackend::displayMessageBox(ruvo::MessageBox2 &box)
{
    if (!m_interactive)
        return false;
    std::vector<std::wstring> lines;
    const std::wstring title = box.title().toKELString().wstr();
    if (!title.empty())
        lines.push_back(L"Question: " + title);
    lines.push_back(box.text().toKELString().wstr());
    lines.push_back(L"Type r and Enter to retry, or a and Enter to abort the test.");
    m_question.reset(new TerminalQuestion(m_terminal));
    m_question->addAnswer(L"r", L"retry", RETRY_ANSWER);
    m_question->addAnswer(L"a", L"abort", ABORT_ANSWER);
    m_question->setStopAnswer(ABORT_ANSWER);
    m_question->show(lines);
    return true;
}

bool TerminalBackend::waitMessageBox(ruvo::MessageBox2 &box, uint32_t milliseconds)
{
    if (!m_question)
        return false;
    int answer = 0;
    const TerminalQuestion::Outcome outcome = m_question->wait(milliseconds, answer);
    m_question.reset();
    if (outcome == TerminalQuestion::STOPPED)
        m_terminal.line(L"Stop requested: the question is answered with abort.");
    else if (outcome == TerminalQuestion::NO_ANSWER)
        m_terminal.line(L"No answer: the test takes its default.");
    if (outcome == TerminalQuestion::NO_ANSWER)
        return false;
    box.setReturn(answer);
    return true;
}

} // namespace diag
} // namespace sorvane
