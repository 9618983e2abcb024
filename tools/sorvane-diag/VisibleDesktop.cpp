#include "VisibleDesktop.h"

#include <windows.h>

namespace sorvane {
namespace diag {

bool VisibleDesktop::present()
{
    return !wineWithoutDisplay() && stationVisible();
}

bool VisibleDesktop::wineWithoutDisplay()
{
    wchar_t driver[64] = L"";
    DWORD size = sizeof(driver);
    if (RegGetValueW(HKEY_CURRENT_USER, L"Software\\Wine\\Drivers", L"Graphics", RRF_RT_REG_SZ, nullptr, driver,
                     &size) != ERROR_SUCCESS)
        return false;
    return lstrcmpiW(driver, L"null") == 0;
}

bool VisibleDesktop::stationVisible()
{
    HWINSTA station = GetProcessWindowStation();
    USEROBJECTFLAGS flags = {};
    DWORD needed = 0;
    if (!station || !GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof(flags), &needed))
        return true;
    return (flags.dwFlags & WSF_VISIBLE) != 0;
}

} // namespace diag
} // namespace sorvane
