#include "WindowWatcher.h"

namespace sorvane {
namespace test {

WindowWatcher::WindowWatcher(const std::wstring &className, const std::wstring &caption, Action action)
    : m_className(className), m_caption(caption), m_action(action), m_stop(false), m_seen(false), m_seenVisible(false),
      m_thread(&WindowWatcher::watch, this)
{
}

WindowWatcher::~WindowWatcher()
{
    m_stop = true;
    m_thread.join();
}

void WindowWatcher::watch()
{
    while (!m_stop) {
        HWND window = FindWindowW(m_className.c_str(), m_caption.c_str());
        if (window) {
            m_seen = true;
            if (IsWindowVisible(window))
                m_seenVisible = true;
            if (m_action) {
                m_action(window);
                m_action = Action();
            }
        }
        Sleep(10);
    }
}

std::wstring WindowWatcher::itemText(HWND dialog, int id)
{
    wchar_t text[256] = {};
    GetDlgItemTextW(dialog, id, text, 256);
    return text;
}

void WindowWatcher::press(HWND dialog, int id)
{
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

int WindowWatcher::countInThisProcess(const std::wstring &className)
{
    return static_cast<int>(findInThisProcess(className).size());
}

std::vector<HWND> WindowWatcher::findInThisProcess(const std::wstring &className)
{
    struct Search {
        std::wstring className;
        std::vector<HWND> found;
    } search{className, {}};
    EnumWindows(
        [](HWND window, LPARAM context) -> BOOL {
            Search *search = reinterpret_cast<Search *>(context);
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            wchar_t name[256] = {};
            GetClassNameW(window, name, 256);
            if (process == GetCurrentProcessId() && search->className == name)
                search->found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace test
} // namespace sorvane
