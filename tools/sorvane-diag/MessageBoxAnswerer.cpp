#include "MessageBoxAnswerer.h"
#include "Terminal.h"
#include "TerminalQuestion.h"

#include <chrono>
#include <vector>

namespace sorvane {
namespace diag {

namespace {

const std::chrono::milliseconds kLookEvery(100);
// The class of dialog boxes, message boxes among them.
const wchar_t kDialogClass[] = L"#32770";
// The static control that holds a message box's text.
const int kMessageTextId = 0xFFFF;

struct Search {
    const std::wstring *title;
    HWND found;
};

BOOL CALLBACK matchBox(HWND window, LPARAM parameter)
{
    Search &search = *reinterpret_cast<Search *>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t className[16] = {0};
    GetClassNameW(window, className, 16);
    if (process != GetCurrentProcessId() || std::wstring(className) != kDialogClass)
        return TRUE;
    const int length = GetWindowTextLengthW(window);
    std::vector<wchar_t> title(static_cast<size_t>(length) + 1, L'\0');
    GetWindowTextW(window, title.data(), length + 1);
    if (std::wstring(title.data()) != *search.title)
        return TRUE;
    search.found = window;
    return FALSE;
}

} // namespace

MessageBoxAnswerer::MessageBoxAnswerer(Terminal &terminal, const std::wstring &title)
    : m_terminal(terminal), m_title(title), m_quit(false)
{
    m_watcher = std::thread(&MessageBoxAnswerer::watch, this);
}

MessageBoxAnswerer::~MessageBoxAnswerer()
{
    m_quit = true;
    m_watcher.join();
}

void MessageBoxAnswerer::watch()
{
    while (!m_quit) {
        const HWND box = findBox();
        if (box) {
            answer(box);
            return;
        }
        std::this_thread::sleep_for(kLookEvery);
    }
}

HWND MessageBoxAnswerer::findBox() const
{
    Search search = {&m_title, nullptr};
    EnumWindows(matchBox, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::wstring MessageBoxAnswerer::textOf(HWND box)
{
    const HWND text = GetDlgItem(box, kMessageTextId);
    if (!text)
        return std::wstring();
    const int length = GetWindowTextLengthW(text);
    std::vector<wchar_t> buffer(static_cast<size_t>(length) + 1, L'\0');
    GetWindowTextW(text, buffer.data(), length + 1);
    return buffer.data();
}

void MessageBoxAnswerer::answer(HWND box)
{
    TerminalQuestion question(m_terminal);
    question.addAnswer(L"p", L"pass", IDYES);
    question.addAnswer(L"f", L"fail", IDNO);
    question.addAnswer(L"c", L"cancel", IDCANCEL);
    question.setStopAnswer(IDCANCEL);
    question.show({L"Question: " + m_title, textOf(box),
                   L"Type p and Enter if it passed, f and Enter if it failed, or c and Enter to cancel the test."});
    int button = IDCANCEL;
    const TerminalQuestion::Outcome outcome = question.wait(0, button);
    if (outcome == TerminalQuestion::STOPPED)
        m_terminal.line(L"Stop requested: the question is answered with cancel.");
    else if (outcome == TerminalQuestion::NO_ANSWER)
        m_terminal.line(L"No answer: the question is answered with cancel.");
    if (outcome == TerminalQuestion::NO_ANSWER)
        button = IDCANCEL;
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
}

} // namespace diag
} // namespace sorvane
