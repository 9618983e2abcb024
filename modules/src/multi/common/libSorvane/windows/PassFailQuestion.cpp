#include "PassFailQuestion.h"

#include "CaptureLog.h"
#include "ModuleRegistration.h"

#include <kel/KELLocale.h>
#include <windows.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

const unsigned kQuestionStyle = MB_YESNOCANCEL | MB_ICONQUESTION | MB_SYSTEMMODAL;
// Language values of the right-to-left languages (Arabic and Hebrew).
const int kArabic = 1;
const int kHebrew = 8;

// The relabelling hook is per thread and lives only until the box is activated.
struct Relabelling {
    HHOOK hook;
    kel::String passText;
    kel::String failText;
};
thread_local Relabelling *t_relabelling = nullptr;

void setLabel(HWND box, int button, const kel::String &text)
{
    if (!text.isEmpty())
        SetDlgItemTextW(box, button, text.c_str());
}

LRESULT CALLBACK relabelOnActivate(int code, WPARAM wParam, LPARAM lParam)
{
    Relabelling *relabelling = t_relabelling;
    if (!relabelling)
        return 0;
    const HHOOK hook = relabelling->hook;
    if (code == HCBT_ACTIVATE) {
        HWND box = reinterpret_cast<HWND>(wParam);
        setLabel(box, IDYES, relabelling->passText);
        setLabel(box, IDNO, relabelling->failText);
        setLabel(box, IDCANCEL, kel::String());
        UnhookWindowsHookEx(hook);
        t_relabelling = nullptr;
    }
    return CallNextHookEx(hook, code, wParam, lParam);
}

} // namespace

unsigned PassFailQuestion::style()
{
    const int language = kel::KELLocale::getGlobalLocale().getLanguage().value();
    return language == kArabic || language == kHebrew ? kQuestionStyle | MB_RTLREADING : kQuestionStyle;
}

int PassFailQuestion::ask(const kel::String &title)
{
    SORVANE_TRACE();
    Relabelling relabelling;
    relabelling.passText = g_pass->localizedString().toKELString();
    relabelling.failText = g_fail->localizedString().toKELString();
    relabelling.hook = SetWindowsHookExW(WH_CBT, relabelOnActivate, nullptr, GetCurrentThreadId());
    t_relabelling = relabelling.hook ? &relabelling : nullptr;

    const kel::String text = g_didTestPass->localizedString().toKELString();
    const int answer = MessageBoxW(nullptr, text.c_str(), title.c_str(), style());

    // The box may have failed before it was ever activated.
    if (t_relabelling) {
        UnhookWindowsHookEx(relabelling.hook);
        t_relabelling = nullptr;
    }
    SORVANE_LOG_DETAIL("pass/fail question answered " << answer);
    return answer;
}

} // namespace sorvane
