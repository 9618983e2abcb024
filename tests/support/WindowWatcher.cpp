#include "WindowWatcher.h"

namespace sorvane {
namespace test {

WindowWatcher::WindowWatcher(const std::wstring& className, const std::wstring& caption, Action action)
    : m_className(className), m_caption(caption), m_action(action), m_stop(false), m_seen(false),
      m_seenVisible(false), m_thread(&WindowWatcher::watch, this)
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
            if (IsWindowVisible(window)) m_seenVisible = true;
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

bool WindowWatcher::exists(const std::wstring& className, const std::wstring& caption)
{
    return FindWindowW(className.c_str(), caption.c_str()) != nullptr;
}

} // namespace test
} // namespace sorvane
