#include "Terminal.h"
#include "ProgressBar.h"

#include <kel/String.h>

namespace sorvane {
namespace diag {

Terminal::Terminal(bool peopleOnStderr)
    : m_out(open(STD_OUTPUT_HANDLE)), m_err(open(STD_ERROR_HANDLE)), m_people(peopleOnStderr ? m_err : m_out),
      m_barActive(false), m_barDrawn(false), m_questionOpen(false), m_percent(0), m_writtenPercent(-1)
{
}

Terminal::Stream Terminal::open(DWORD which)
{
    Stream stream;
    stream.handle = GetStdHandle(which);
    DWORD mode = 0;
    stream.console = stream.handle && stream.handle != INVALID_HANDLE_VALUE && GetConsoleMode(stream.handle, &mode);
    return stream;
}

void Terminal::write(const Stream &stream, const std::wstring &text)
{
    if (!stream.handle || stream.handle == INVALID_HANDLE_VALUE || text.empty())
        return;
    DWORD written = 0;
    if (stream.console) {
        WriteConsoleW(stream.handle, text.c_str(), static_cast<DWORD>(text.size()), &written, nullptr);
        return;
    }
    const std::string utf8 = kel::String(text).toUtf8();
    WriteFile(stream.handle, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
}

int Terminal::consoleWidth() const
{
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!GetConsoleScreenBufferInfo(m_people.handle, &info))
        return 80;
    const int width = info.srWindow.Right - info.srWindow.Left + 1;
    return width > 10 ? width : 80;
}

void Terminal::eraseBar()
{
    if (!m_barDrawn)
        return;
    write(m_people, L"\r" + std::wstring(consoleWidth() - 1, L' ') + L"\r");
    m_barDrawn = false;
}

void Terminal::drawBar()
{
    write(m_people, L"\r" + ProgressBar::render(m_percent, m_text, consoleWidth() - 1));
    m_barDrawn = true;
}

bool Terminal::barShown() const
{
    return m_barActive && m_people.console && !m_questionOpen;
}

void Terminal::line(const std::wstring &text)
{
    std::lock_guard<std::mutex> guard(m_lock);
    eraseBar();
    write(m_people, text + L"\n");
    if (barShown())
        drawBar();
}

void Terminal::problem(const std::wstring &text)
{
    std::lock_guard<std::mutex> guard(m_lock);
    // Standard error and a bar on standard output may share one console: the problem starts
    // on a line of its own, not behind the bar.
    const bool sameScreen = m_people.handle == m_err.handle || (m_people.console && m_err.console);
    if (sameScreen)
        eraseBar();
    write(m_err, text + L"\n");
    if (sameScreen && barShown())
        drawBar();
}

void Terminal::beginQuestion()
{
    std::lock_guard<std::mutex> guard(m_lock);
    eraseBar();
    m_questionOpen = true;
}

void Terminal::endQuestion()
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_questionOpen = false;
}

void Terminal::progressNote(const std::wstring &text)
{
    int percent = 0;
    {
        std::lock_guard<std::mutex> guard(m_lock);
        percent = m_percent;
    }
    progress(percent, text);
}

void Terminal::progress(int percent, const std::wstring &text)
{
    std::lock_guard<std::mutex> guard(m_lock);
    const bool newText = text != m_text;
    m_barActive = true;
    m_percent = percent;
    m_text = text;
    if (m_people.console) {
        if (barShown())
            drawBar();
    } else if (newText && !text.empty() && !m_questionOpen) {
        writeProgressLine();
    }
}

void Terminal::writeProgressLine()
{
    write(m_people, ProgressBar::render(m_percent, m_text, 0) + L"\n");
    m_writtenPercent = m_percent;
}

void Terminal::fillProgress()
{
    std::lock_guard<std::mutex> guard(m_lock);
    if (!m_barActive)
        return;
    m_percent = 100;
    if (barShown())
        drawBar();
    // Without a console a line is written per text; the last one may show less than the end.
    else if (!m_people.console && m_writtenPercent != 100)
        writeProgressLine();
}

void Terminal::finishProgress()
{
    std::lock_guard<std::mutex> guard(m_lock);
    if (m_barDrawn)
        write(m_people, L"\n");
    m_barDrawn = false;
    m_barActive = false;
    m_percent = 0;
    m_writtenPercent = -1;
    m_text.clear();
}

void Terminal::writeData(const std::string &utf8)
{
    std::lock_guard<std::mutex> guard(m_lock);
    if (m_out.console) {
        write(m_out, kel::String::fromUtf8(utf8).wstr());
        return;
    }
    DWORD written = 0;
    WriteFile(m_out.handle, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
}

} // namespace diag
} // namespace sorvane
