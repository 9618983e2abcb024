// Answers the library's pass/fail message box at the terminal, for a person who cannot see
// it (no display): while it lives, a thread of its own looks for a box of this process with
// the given title, asks its question at the terminal and presses the button that was chosen.
// Ctrl+C, or the end of standard input, presses Cancel.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>
#include <thread>

namespace sorvane {
namespace diag {

class Terminal;

class MessageBoxAnswerer {
public:
    MessageBoxAnswerer(Terminal &terminal, const std::wstring &title);
    ~MessageBoxAnswerer();
    MessageBoxAnswerer(const MessageBoxAnswerer &) = delete;
    MessageBoxAnswerer &operator=(const MessageBoxAnswerer &) = delete;

private:
    void watch();
    // The box of this process with the title; null when there is none (yet).
    HWND findBox() const;
    void answer(HWND box);
    static std::wstring textOf(HWND box);

    Terminal &m_terminal;
    std::wstring m_title;
    std::atomic<bool> m_quit;
    std::thread m_watcher;
};

} // namespace diag
} // namespace sorvane
