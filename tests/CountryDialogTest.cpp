// The country selection dialog, shown by the analog tuner before its check and after a
// failed first pass: the real dialog is read and answered from a second thread.
#include "CountryDialogDriver.h"
#include "ManualClock.h"
#include "TunerLab.h"
#include "WindowCreationRefusal.h"

#include <AnalogTuner.h>
#include <CaptureUtil.h>
#include <CountryCodeManager.h>
#include <ModuleRegistration.h>

#include <functional>
#include <thread>

namespace {

using ruvo::TestResult;
using sorvane::AnalogTuner;
using sorvane::CaptureException;
using sorvane::test::journalOf;
using sorvane::test::kLabTVCard;

const int kListId = 1000;
const int kPromptId = 1001;

std::wstring windowText(HWND window)
{
    wchar_t text[256] = L"";
    GetWindowTextW(window, text, 256);
    return text;
}

std::vector<std::wstring> listItems(HWND list)
{
    std::vector<std::wstring> items;
    const LRESULT count = SendMessageW(list, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        std::vector<wchar_t> text(SendMessageW(list, CB_GETLBTEXTLEN, i, 0) + 1, L'\0');
        SendMessageW(list, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        items.push_back(text.data());
    }
    return items;
}

// What the user saw on the dialog.
struct Seen {
    bool shown = false;
    std::wstring caption;
    std::wstring prompt;
    std::wstring button;
    std::vector<std::wstring> items;
    std::wstring selected;
    LRESULT fieldHeight = 0;
    SIZE client = {};
    SIZE expectedClient = {};
};

// Waits on its own thread for the dialog to show, notes what it shows and answers it.
class DialogDriver {
public:
    explicit DialogDriver(std::function<void(HWND)> answer) : m_thread([this, answer] { drive(answer); }) {}
    ~DialogDriver()
    {
        if (m_thread.joinable())
            m_thread.join();
    }
    const Seen &seen()
    {
        if (m_thread.joinable())
            m_thread.join();
        return m_seen;
    }

private:
    void drive(const std::function<void(HWND)> &answer)
    {
        const HWND dialog = sorvane::test::CountryDialogDriver::waitForDialog();
        if (!dialog)
            return;
        m_seen.shown = true;
        m_seen.caption = windowText(dialog);
        m_seen.prompt = windowText(GetDlgItem(dialog, kPromptId));
        m_seen.button = windowText(GetDlgItem(dialog, IDOK));
        const HWND list = GetDlgItem(dialog, kListId);
        m_seen.items = listItems(list);
        const LRESULT selected = SendMessageW(list, CB_GETCURSEL, 0, 0);
        if (selected >= 0 && selected < static_cast<LRESULT>(m_seen.items.size()))
            m_seen.selected = m_seen.items[selected];
        m_seen.fieldHeight = SendMessageW(list, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
        RECT client;
        GetClientRect(dialog, &client);
        m_seen.client = SIZE{client.right, client.bottom};
        RECT units = {0, 0, 261, 66};
        MapDialogRect(dialog, &units);
        m_seen.expectedClient = SIZE{units.right, units.bottom};
        answer(dialog);
    }

    Seen m_seen;
    std::thread m_thread;
};

std::function<void(HWND)> choose(const std::wstring &country)
{
    return [country](HWND dialog) {
        const HWND list = GetDlgItem(dialog, kListId);
        SendMessageW(
            list, CB_SETCURSEL,
            SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(country.c_str())),
            0);
        PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDOK)));
    };
}

void closeDialog(HWND dialog)
{
    PostMessageW(dialog, WM_CLOSE, 0, 0);
}

class CountryDialogTest : public sorvane::test::TunerLabTest {
protected:
    void SetUp() override
    {
        TunerLabTest::SetUp();
        card.set(L"channels", L"2:antenna");
        setTVRange(2, 2);
    }

    CaptureException checkTV()
    {
        return sorvane::test::outcomeOf([this] { tuner.checkTVSignal(); });
    }

    sorvane::test::ManualClock clock;
    AnalogTuner tuner{sorvane::test::labTVCard(), kel::String(L"Country test")};
};

TEST_F(CountryDialogTest, ChosenCountryGoesToTheTuner)
{
    setParameter("AskCountryCode1", ruvo::Value::fromBool(true));
    DialogDriver driver(choose(L"Germany (Deutschland)"));

    EXPECT_EQ(checkTV().getResult(), TestResult::PASS());

    const Seen &seen = driver.seen();
    ASSERT_TRUE(seen.shown);
    EXPECT_EQ(seen.caption, L"Please select a country");
    EXPECT_EQ(seen.prompt, L"Please select your country:");
    EXPECT_EQ(seen.button, L"OK");
    EXPECT_EQ(seen.client.cx, seen.expectedClient.cx);
    EXPECT_EQ(seen.client.cy, seen.expectedClient.cy);

    // Every country of the table, once, sorted by name.
    const sorvane::CountryCodeManager table;
    ASSERT_EQ(seen.items.size(), static_cast<size_t>(table.countryCodeCount()));
    std::vector<std::wstring> names;
    for (int i = 0; i < table.countryCodeCount(); ++i)
        names.push_back(table.countryCodeAtIndex(i)->name().wstr());
    EXPECT_TRUE(std::is_permutation(seen.items.begin(), seen.items.end(), names.begin()));
    for (size_t i = 1; i < seen.items.size(); ++i) {
        EXPECT_LE(lstrcmpiW(seen.items[i - 1].c_str(), seen.items[i].c_str()), 0) << "item " << i;
    }
    if (sorvane::CaptureUtil::getDefaultCountryCode() == 1) {
        EXPECT_EQ(seen.selected, L"USA");
    }

    EXPECT_EQ(journalOf(kLabTVCard, L"CountryCode "), (std::vector<std::wstring>{L"CountryCode 49"}));
}

TEST_F(CountryDialogTest, ClosingTheDialogAbortsTheTest)
{
    setParameter("AskCountryCode1", ruvo::Value::fromBool(true));
    DialogDriver driver(closeDialog);

    const CaptureException e = checkTV();

    EXPECT_TRUE(driver.seen().shown);
    EXPECT_EQ(e.getResult(), TestResult::USERABORTED());
    EXPECT_EQ(e.getErrorEvent(), nullptr);
    EXPECT_EQ(e.getWarningEvent(), nullptr);
    EXPECT_TRUE(journalOf(kLabTVCard, L"CountryCode").empty());
    EXPECT_TRUE(sorvane::test::tunedChannels(kLabTVCard).empty());
}

TEST_F(CountryDialogTest, AskedAgainAfterAFailedFirstPass)
{
    card.set(L"channels", L"");
    setParameter("AskCountryCode2", ruvo::Value::fromBool(true));
    setParameter("CheckTVCable", ruvo::Value::fromBool(false));
    DialogDriver driver(choose(L"Japan (日本)"));

    EXPECT_EQ(checkTV().getResult(), TestResult::NOSIGNAL());

    EXPECT_TRUE(driver.seen().shown);
    const std::wstring first = L"CountryCode " + std::to_wstring(sorvane::CaptureUtil::getDefaultCountryCode());
    EXPECT_EQ(journalOf(kLabTVCard, L"CountryCode "), (std::vector<std::wstring>{first, L"CountryCode 81"}));
    EXPECT_EQ(sorvane::test::tunedChannels(kLabTVCard).size(), 4u);
}

TEST_F(CountryDialogTest, DialogThatCannotBeShownHandsItsAnswerToTheTuner)
{
    setParameter("AskCountryCode1", ruvo::Value::fromBool(true));
    CaptureException e(TestResult::PASS(), 0, nullptr, nullptr);
    {
        // The dialog class, WC_DIALOG, by its atom.
        sorvane::test::WindowCreationRefusal refused(MAKEINTRESOURCEW(0x8002));
        ASSERT_TRUE(refused.active());
        e = checkTV();
    }
    // The tuner refuses country -1 and keeps its own; the channel test runs all the same.
    EXPECT_EQ(e.getResult(), TestResult::PASS());
    EXPECT_EQ(journalOf(kLabTVCard, L"CountryCode "), (std::vector<std::wstring>{L"CountryCode -1 failed 0x80070057"}));
    EXPECT_EQ(sorvane::test::tunedChannels(kLabTVCard).size(), 1u);
}

TEST_F(CountryDialogTest, TouchScreenFactorEnlargesTheRows)
{
    setParameter("AskCountryCode1", ruvo::Value::fromBool(true));
    Seen plain;
    {
        DialogDriver driver(closeDialog);
        checkTV();
        plain = driver.seen();
    }
    setParameter("TouchscreenFactor", ruvo::Value::fromDouble(2.0));
    DialogDriver driver(closeDialog);
    checkTV();

    ASSERT_TRUE(plain.shown);
    ASSERT_TRUE(driver.seen().shown);
    // Only the selection field is checked: Wine's combo box keeps the rows of a list that is
    // not owner-drawn at their height, and reports the field two pixels taller than set.
    EXPECT_GE(driver.seen().fieldHeight, plain.fieldHeight * 2);
}

} // namespace
