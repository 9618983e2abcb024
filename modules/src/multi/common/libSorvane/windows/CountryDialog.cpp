#include "CountryDialog.h"

#include "CaptureLog.h"
#include "CountryCodeManager.h"
#include "LibraryModule.h"
#include "ModuleRegistration.h"
#include "resources/CountryDialogIds.h"

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

// The selection field and the list items of a combo box.
const WPARAM kSelectionField = static_cast<WPARAM>(-1);
const WPARAM kListItems = 0;

// The video window posts WM_QUIT when it is destroyed. Left in the queue, it would end
// the dialog's modal loop before the user saw it.
void discardPendingQuit()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {}
}

} // namespace

CountryDialog::CountryDialog(const kel::Array<CountryCode> &countries) : m_countries(countries), m_preselectedCode(0) {}

kel::Array<CountryCode> CountryDialog::allCountries()
{
    const CountryCodeManager table;
    kel::Array<CountryCode> countries(table.countryCodeCount());
    for (int i = 0; i < table.countryCodeCount(); ++i)
        countries.add(*table.countryCodeAtIndex(i));
    return countries;
}

int CountryDialog::ask(HWND owner, int preselectedCode)
{
    m_preselectedCode = preselectedCode;
    discardPendingQuit();
    const INT_PTR result = DialogBoxParamW(LibraryModule::instance(), MAKEINTRESOURCEW(IDD_COUNTRY_SELECTION), owner,
                                           &CountryDialog::dialogProc, reinterpret_cast<LPARAM>(this));
    if (result == -1) {
        SORVANE_LOG_ERROR("DialogBoxParam failed: " << static_cast<unsigned long>(GetLastError()));
        return -1;
    }
    SORVANE_LOG_DETAIL("DialogBox returned: " << static_cast<int>(result));
    return static_cast<int>(result);
}

INT_PTR CALLBACK CountryDialog::dialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        reinterpret_cast<const CountryDialog *>(lParam)->initialize(dialog);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
            const CountryDialog *self = reinterpret_cast<const CountryDialog *>(GetWindowLongPtrW(dialog, DWLP_USER));
            const int code = self ? self->selectedCode(dialog) : 0;
            if (code == 0) {
                MessageBeep(MB_ICONWARNING);
                return TRUE;
            }
            EndDialog(dialog, code);
            return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            EndDialog(dialog, 0);
            return TRUE;
        }
        return FALSE;
    case WM_CLOSE:
        EndDialog(dialog, 0);
        return TRUE;
    default:
        return FALSE;
    }
}

void CountryDialog::initialize(HWND dialog) const
{
    SetDlgItemTextW(dialog, IDC_COUNTRY_PROMPT, g_pleaseSelectCountry->localizedString().c_str());
    SetDlgItemTextW(dialog, IDOK, g_OKButton->localizedString().c_str());
    const HWND list = GetDlgItem(dialog, IDC_COUNTRY_LIST);
    fillList(list);
    enlargeForTouch(list);
}

// Each item carries its position in m_countries; the list sorts the names itself.
void CountryDialog::fillList(HWND list) const
{
    int preselected = -1;
    for (int i = 0; i < m_countries.size(); ++i) {
        const LRESULT item =
            SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(m_countries[i].name().c_str()));
        if (item < 0)
            continue;
        SendMessageW(list, CB_SETITEMDATA, static_cast<WPARAM>(item), i);
        if (preselected < 0 && m_countries[i].countryCode() == m_preselectedCode)
            preselected = i;
    }
    const LRESULT count = SendMessageW(list, CB_GETCOUNT, 0, 0);
    for (LRESULT item = 0; item < count; ++item) {
        if (SendMessageW(list, CB_GETITEMDATA, static_cast<WPARAM>(item), 0) == preselected) {
            SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
            return;
        }
    }
    if (count > 0)
        SendMessageW(list, CB_SETCURSEL, 0, 0);
}

// Touch screens ask for taller rows; factors up to 1.0 leave the list as it is.
void CountryDialog::enlargeForTouch(HWND list) const
{
    if (!g_touchscreenFactor->isset())
        return;
    const double factor = g_touchscreenFactor->value().valueDouble();
    if (factor <= 1.0)
        return;
    const WPARAM parts[] = {kSelectionField, kListItems};
    for (WPARAM part : parts) {
        const LRESULT height = SendMessageW(list, CB_GETITEMHEIGHT, part, 0);
        if (height > 0)
            SendMessageW(list, CB_SETITEMHEIGHT, part, static_cast<LPARAM>(height * factor));
    }
}

int CountryDialog::selectedCode(HWND dialog) const
{
    const HWND list = GetDlgItem(dialog, IDC_COUNTRY_LIST);
    const LRESULT item = SendMessageW(list, CB_GETCURSEL, 0, 0);
    if (item == CB_ERR)
        return 0;
    const LRESULT index = SendMessageW(list, CB_GETITEMDATA, static_cast<WPARAM>(item), 0);
    if (index < 0 || index >= m_countries.size())
        return 0;
    return m_countries[static_cast<int>(index)].countryCode();
}

} // namespace sorvane
