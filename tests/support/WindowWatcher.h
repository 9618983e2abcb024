#pragma once

#include <windows.h>
#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace sorvane {
namespace test {

// Watches, from a thread of its own, for a top-level window of a class and caption, and
// acts on it once when it appears (reads it, clicks a button ...).
class WindowWatcher {
public:
    typedef std::function<void(HWND)> Action;

    WindowWatcher(const std::wstring &className, const std::wstring &caption, Action action = Action());
    ~WindowWatcher();
    WindowWatcher(const WindowWatcher &) = delete;
    WindowWatcher &operator=(const WindowWatcher &) = delete;

    bool seen() const { return m_seen; }
    bool seenVisible() const { return m_seenVisible; }

    // Reads a dialog control's text.
    static std::wstring itemText(HWND dialog, int id);
    // Presses a dialog button as a click would.
    static void press(HWND dialog, int id);
    // Top-level windows of the class that belong to this process. Test programs run side
    // by side on one desktop, so a plain FindWindow may see another program's window.
    static int countInThisProcess(const std::wstring &className);
    static std::vector<HWND> findInThisProcess(const std::wstring &className);

private:
    void watch();

    std::wstring m_className;
    std::wstring m_caption;
    Action m_action;
    std::atomic<bool> m_stop;
    std::atomic<bool> m_seen;
    std::atomic<bool> m_seenVisible;
    std::thread m_thread;
};

} // namespace test
} // namespace sorvane
