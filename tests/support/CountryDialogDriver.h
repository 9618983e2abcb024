// Answers the library's country dialog from a second thread, as a user would, and notes
// which countries it listed.
#pragma once

#include <windows.h>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace sorvane {
namespace test {

class CountryDialogDriver {
public:
    static const int kListId = 1000;

    // `country` empty: the dialog is closed without a choice.
    explicit CountryDialogDriver(const std::wstring &country) : m_thread([this, country] { drive(country); }) {}
    ~CountryDialogDriver()
    {
        if (m_thread.joinable())
            m_thread.join();
    }
    CountryDialogDriver(const CountryDialogDriver &) = delete;
    CountryDialogDriver &operator=(const CountryDialogDriver &) = delete;

    // What the dialog listed; empty when it never showed. Waits for the driver to finish.
    const std::vector<std::wstring> &items()
    {
        if (m_thread.joinable())
            m_thread.join();
        return m_items;
    }
    // The library's country dialog once it is visible, waiting up to ten seconds; null when
    // it did not show.
    static HWND waitForDialog()
    {
        HWND dialog = nullptr;
        for (int i = 0; i < 1000 && !dialog; ++i) {
            dialog = FindWindowW(L"#32770", L"Please select a country");
            if (dialog && !IsWindowVisible(dialog))
                dialog = nullptr;
            if (!dialog)
                Sleep(10);
        }
        return dialog;
    }

    bool shown()
    {
        if (m_thread.joinable())
            m_thread.join();
        return m_shown;
    }

private:
    void drive(const std::wstring &country)
    {
        const HWND dialog = waitForDialog();
        if (!dialog)
            return;
        m_shown = true;
        const HWND list = GetDlgItem(dialog, kListId);
        const LRESULT count = SendMessageW(list, CB_GETCOUNT, 0, 0);
        for (LRESULT i = 0; i < count; ++i) {
            std::vector<wchar_t> text(SendMessageW(list, CB_GETLBTEXTLEN, i, 0) + 1, L'\0');
            SendMessageW(list, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
            m_items.push_back(text.data());
        }
        if (country.empty()) {
            PostMessageW(dialog, WM_CLOSE, 0, 0);
            return;
        }
        const LRESULT index =
            SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(country.c_str()));
        SendMessageW(list, CB_SETCURSEL, index, 0);
        PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDOK)));
    }

    bool m_shown = false;
    std::vector<std::wstring> m_items;
    std::thread m_thread;
};

} // namespace test
} // namespace sorvane
