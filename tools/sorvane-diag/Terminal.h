// What a person sees: lines of text and a progress bar that stays on the last line.
// On a console the bar is redrawn in place; into a pipe or file only changes of the
// progress text are written, one line each, so logs stay readable.
#pragma once

#include <windows.h>

#include <mutex>
#include <string>

namespace sorvane {
namespace diag {

class Terminal {
public:
    // With `peopleOnStderr` everything for a person goes to standard error, because
    // standard output carries the JSON report.
    explicit Terminal(bool peopleOnStderr);

    void line(const std::wstring &text);
    // Always on standard error.
    void problem(const std::wstring &text);
    void progress(int percent, const std::wstring &text);
    // The bar with a new text and the percentage it shows.
    void progressNote(const std::wstring &text);
    // Shows the bar full: the work it measures ran to its end.
    void fillProgress();
    // Leaves the bar's last state on its own line.
    void finishProgress();
    // While a question waits for its answer the bar is neither drawn nor redrawn, so that
    // nothing is written over the question or the answer being typed; the bar's state is
    // kept and shown again at its next change after the question.
    void beginQuestion();
    void endQuestion();
    // Bytes for machines, on standard output.
    void writeData(const std::string &utf8);

private:
    struct Stream {
        HANDLE handle;
        bool console;
    };
    static Stream open(DWORD which);
    static void write(const Stream &stream, const std::wstring &text);
    int consoleWidth() const;
    void eraseBar();
    void drawBar();
    void writeProgressLine();
    // Whether the bar may be drawn on the console now.
    bool barShown() const;

    std::mutex m_lock;
    Stream m_out;
    Stream m_err;
    Stream m_people;
    bool m_barActive;
    bool m_barDrawn;
    bool m_questionOpen;
    int m_percent;
    // The percentage of the last progress line written when there is no console to redraw.
    int m_writtenPercent;
    std::wstring m_text;
};

} // namespace diag
} // namespace sorvane
