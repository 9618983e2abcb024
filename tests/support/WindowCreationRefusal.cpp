#include "WindowCreationRefusal.h"

namespace sorvane {
namespace test {

namespace {
// The refused class of this thread: an atom, or a name.
thread_local ATOM t_refusedAtom = 0;
thread_local std::wstring t_refusedName;
} // namespace

WindowCreationRefusal::WindowCreationRefusal(const wchar_t *windowClass) : m_hook(nullptr)
{
    if (IS_INTRESOURCE(windowClass)) {
        t_refusedAtom = LOWORD(reinterpret_cast<ULONG_PTR>(windowClass));
        t_refusedName.clear();
    } else {
        t_refusedAtom = 0;
        t_refusedName = windowClass;
    }
    m_hook = SetWindowsHookExW(WH_CBT, &WindowCreationRefusal::filter, nullptr, GetCurrentThreadId());
}

WindowCreationRefusal::~WindowCreationRefusal()
{
    if (m_hook)
        UnhookWindowsHookEx(m_hook);
    t_refusedAtom = 0;
    t_refusedName.clear();
}

bool WindowCreationRefusal::refused(const wchar_t *windowClass)
{
    if (IS_INTRESOURCE(windowClass))
        return t_refusedAtom != 0 && LOWORD(reinterpret_cast<ULONG_PTR>(windowClass)) == t_refusedAtom;
    return !t_refusedName.empty() && lstrcmpiW(windowClass, t_refusedName.c_str()) == 0;
}

LRESULT CALLBACK WindowCreationRefusal::filter(int code, WPARAM wParam, LPARAM lParam)
{
    // A non-zero answer to HCBT_CREATEWND makes the creation fail.
    if (code == HCBT_CREATEWND && refused(reinterpret_cast<CBT_CREATEWNDW *>(lParam)->lpcs->lpszClass))
        return 1;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace test
} // namespace sorvane
