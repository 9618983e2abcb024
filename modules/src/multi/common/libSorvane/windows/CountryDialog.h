// The country selection dialog (resource 129): a sorted drop-down list of country names
// with the localized prompt and OK button. Ends with the chosen country's code.
#pragma once

#include "CountryCode.h"

#include <windows.h>
#include <kel/Array.h>

namespace sorvane {

class CountryDialog {
public:
    // A dialog listing exactly these countries.
    explicit CountryDialog(const kel::Array<CountryCode> &countries);

    // Every record of the country table, in its order.
    static kel::Array<CountryCode> allCountries();

    // Shows the modal dialog owned by `owner` with the first listed country of
    // `preselectedCode` selected. Returns the chosen country's code, 0 when the user closed
    // the dialog, -1 when it could not be shown.
    int ask(HWND owner, int preselectedCode);

private:
    static INT_PTR CALLBACK dialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    void initialize(HWND dialog) const;
    void fillList(HWND list) const;
    void enlargeForTouch(HWND list) const;
    // The code of the selected country, or 0 when nothing is selected.
    int selectedCode(HWND dialog) const;

    kel::Array<CountryCode> m_countries;
    int m_preselectedCode;
};

} // namespace sorvane
