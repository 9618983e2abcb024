#include "DisplayCheck.h"

#include <windows.h>

#include <cwchar>

namespace sorvane {
namespace diag {

bool DisplayCheck::canShowWindows()
{
    return !wineDrawsNothing() && visibleWindowStation() && GetSystemMetrics(SM_CMONITORS) > 0;
}

// Wine keeps its graphics driver in the registry; "null" makes windows that nobody sees.
bool DisplayCheck::wineDrawsNothing()
{
    wchar_t driver[64] = {0};
    DWORD size = sizeof(driver);
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\Wine\\Drivers", L"Graphics", RRF_RT_REG_SZ, nullptr, driver, &size);
    return status == ERROR_SUCCESS && _wcsicmp(driver, L"null") == 0;
}

bool DisplayCheck::visibleWindowStation()
{
    USEROBJECTFLAGS flags = {};
    DWORD needed = 0;
    const HWINSTA station = GetProcessWindowStation();
    if (!station || !GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof(flags), &needed))
        return true;
    return (flags.dwFlags & WSF_VISIBLE) != 0;
}

} // namespace diag
} // namespace sorvane
