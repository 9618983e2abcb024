// What the console host leaves on a console's screen when its bar meets other output: a
// problem on standard error starts a line of its own, and a question waiting for its answer
// is never drawn over by the bar. The screen is read back as a person would see it.
#include "SharedConsole.h"

#include <sorvane-diag/Terminal.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using sorvane::diag::Terminal;

HANDLE openScreen()
{
    return CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                       OPEN_EXISTING, 0, nullptr);
}

// The console of this test, with standard output and error on its screen through handles of
// their own, as a shell gives them.
class ConsoleScreen {
public:
    ConsoleScreen()
        : m_out(GetStdHandle(STD_OUTPUT_HANDLE)), m_err(GetStdHandle(STD_ERROR_HANDLE)), m_screen(openScreen()),
          m_errorScreen(openScreen())
    {
        SetStdHandle(STD_OUTPUT_HANDLE, m_screen);
        SetStdHandle(STD_ERROR_HANDLE, m_errorScreen);
    }
    ~ConsoleScreen()
    {
        SetStdHandle(STD_OUTPUT_HANDLE, m_out);
        SetStdHandle(STD_ERROR_HANDLE, m_err);
        for (const HANDLE screen : {m_screen, m_errorScreen}) {
            if (screen != INVALID_HANDLE_VALUE)
                CloseHandle(screen);
        }
    }
    ConsoleScreen(const ConsoleScreen &) = delete;
    ConsoleScreen &operator=(const ConsoleScreen &) = delete;

    bool ready() const { return m_screen != INVALID_HANDLE_VALUE && m_errorScreen != INVALID_HANDLE_VALUE; }

    // The rows from the top of the buffer to the cursor's, blanks at their ends removed.
    std::vector<std::wstring> rows() const
    {
        CONSOLE_SCREEN_BUFFER_INFO info;
        std::vector<std::wstring> result;
        if (!GetConsoleScreenBufferInfo(m_screen, &info))
            return result;
        for (SHORT row = 0; row <= info.dwCursorPosition.Y; ++row) {
            std::wstring text(static_cast<size_t>(info.dwSize.X), L' ');
            DWORD read = 0;
            const COORD at = {0, row};
            ReadConsoleOutputCharacterW(m_screen, &text[0], static_cast<DWORD>(text.size()), at, &read);
            text.resize(read);
            text.erase(text.find_last_not_of(L' ') + 1);
            result.push_back(text);
        }
        return result;
    }

private:
    HANDLE m_out;
    HANDLE m_err;
    HANDLE m_screen;
    HANDLE m_errorScreen;
};

bool startsWith(const std::wstring &text, const std::wstring &start)
{
    return text.compare(0, start.size(), start) == 0;
}

} // namespace

TEST(TerminalScreenTest, AProblemStartsItsOwnLineAndTheBarFollowsIt)
{
    sorvane::test::SharedConsole console;
    ASSERT_TRUE(console.ready()) << GetLastError();
    ConsoleScreen screen;
    ASSERT_TRUE(screen.ready()) << GetLastError();
    Terminal terminal(false);

    terminal.progress(40, L"Testing channel 5");
    terminal.problem(L"Stop requested: the test ends at its next check.");

    const std::vector<std::wstring> rows = screen.rows();
    ASSERT_EQ(2u, rows.size());
    EXPECT_EQ(L"Stop requested: the test ends at its next check.", rows[0]);
    EXPECT_TRUE(startsWith(rows[1], L"[#########...............]  40%  Testing channel 5")) << rows[1].c_str();
}

TEST(TerminalScreenTest, AQuestionIsNeverDrawnOver)
{
    sorvane::test::SharedConsole console;
    ASSERT_TRUE(console.ready()) << GetLastError();
    ConsoleScreen screen;
    ASSERT_TRUE(screen.ready()) << GetLastError();
    Terminal terminal(false);

    terminal.progress(10, L"Testing channel 2");
    terminal.beginQuestion();
    terminal.line(L"Type r and Enter to retry, or a and Enter to abort the test.");
    // The bar moves on while the question waits (a device's slow stop, a stop request).
    terminal.progress(20, L"stopping the device: 5 s (Ctrl+C twice quits)");
    terminal.problem(L"Stop requested: the test ends at its next check.");
    std::vector<std::wstring> rows = screen.rows();
    ASSERT_EQ(3u, rows.size());
    EXPECT_EQ(L"Type r and Enter to retry, or a and Enter to abort the test.", rows[0]);
    EXPECT_EQ(L"Stop requested: the test ends at its next check.", rows[1]);
    EXPECT_EQ(L"", rows[2]);

    terminal.endQuestion();
    terminal.progress(30, L"Testing channel 3");
    rows = screen.rows();
    ASSERT_EQ(3u, rows.size());
    EXPECT_TRUE(startsWith(rows[2], L"[#######.................]  30%  Testing channel 3")) << rows[2].c_str();
}
