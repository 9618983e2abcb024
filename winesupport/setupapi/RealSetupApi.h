// Wine's own entry points of the SetupAPI functions the gap filler replaces, taken from
// setupapi.dll itself so the replacements reach them whatever an import table says.
#pragma once

#include <windows.h>
#include <setupapi.h>

namespace winesupport {

struct RealSetupApi {
    decltype(&SetupDiGetDeviceRegistryPropertyW) getDeviceRegistryProperty = nullptr;
    decltype(&SetupDiCallClassInstaller) callClassInstaller = nullptr;
    decltype(&SetupDiEnumDriverInfoW) enumDriverInfo = nullptr;
    decltype(&SetupDiBuildDriverInfoList) buildDriverInfoList = nullptr;
    decltype(&SetupDiGetDriverInfoDetailW) getDriverInfoDetail = nullptr;
    decltype(&SetupDiGetSelectedDriverW) getSelectedDriver = nullptr;
    decltype(&SetupDiDestroyDeviceInfoList) destroyDeviceInfoList = nullptr;

    // Resolved on first use; setupapi.dll stays loaded for the process.
    static const RealSetupApi &get();
};

} // namespace winesupport
