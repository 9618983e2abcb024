#pragma once

#include <windows.h>
#include <string>

namespace sorvane {
namespace test {

// While it lives, the calling thread cannot create windows of one class: CreateWindowEx (and
// DialogBox) fail as they do when the system refuses a window. Installed through a CBT hook.
class WindowCreationRefusal {
public:
    // The class by name, or by atom (MAKEINTATOM, e.g. WC_DIALOG for dialog boxes).
    explicit WindowCreationRefusal(const wchar_t *windowClass);
    ~WindowCreationRefusal();
    WindowCreationRefusal(const WindowCreationRefusal &) = delete;
    WindowCreationRefusal &operator=(const WindowCreationRefusal &) = delete;

    bool active() const { return m_hook != nullptr; }

private:
    static LRESULT CALLBACK filter(int code, WPARAM wParam, LPARAM lParam);
    static bool refused(const wchar_t *windowClass);

    HHOOK m_hook;
};

} // namespace test
} // namespace sorvane
