#include "winesupport/WineSetupApi.h"

#include "setupapi/ImportTable.h"
#include "setupapi/RealSetupApi.h"
#include "setupapi/SetupApiGaps.h"

namespace winesupport {

namespace {

bool runsUnderWine()
{
    HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll && GetProcAddress(ntdll, "wine_get_version");
}

} // namespace

bool fillWineSetupApiGaps(HMODULE module)
{
    if (!module || !runsUnderWine())
        return false;
    RealSetupApi::get();
    const ImportTable imports(module);
    const struct {
        const char *name;
        const void *replacement;
    } gaps[] = {
        {"SetupDiSetSelectedDriverW", reinterpret_cast<const void *>(&SetupApiGaps::setSelectedDriver)},
        {"SetupDiGetSelectedDriverW", reinterpret_cast<const void *>(&SetupApiGaps::getSelectedDriver)},
        {"SetupDiDestroyDeviceInfoList", reinterpret_cast<const void *>(&SetupApiGaps::destroyDeviceInfoList)},
        {"SetupDiGetDeviceRegistryPropertyW", reinterpret_cast<const void *>(&SetupApiGaps::getDeviceRegistryProperty)},
        {"SetupDiCallClassInstaller", reinterpret_cast<const void *>(&SetupApiGaps::callClassInstaller)},
        {"SetupDiEnumDriverInfoW", reinterpret_cast<const void *>(&SetupApiGaps::enumDriverInfo)},
        {"SetupDiGetDriverInfoDetailW", reinterpret_cast<const void *>(&SetupApiGaps::getDriverInfoDetail)},
        {"SetupDiBuildDriverInfoList", reinterpret_cast<const void *>(&SetupApiGaps::buildDriverInfoList)},
    };
    for (const auto &gap : gaps)
        imports.redirect("setupapi.dll", gap.name, gap.replacement);
    return true;
}

} // namespace winesupport
