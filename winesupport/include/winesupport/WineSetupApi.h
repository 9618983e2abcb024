// Windows' SetupAPI where Wine 8's falls short, for the modules of a test or host process.
//
// Under Wine, fillWineSetupApiGaps(module) points module's import table entries for these
// setupapi.dll functions at implementations that behave as Windows documents them (the rest
// of each call goes to Wine's own function):
//   SetupDiSetSelectedDriverW       Wine aborts the process: remembers the selected driver
//                                   per device (SetupDiGetSelectedDriverW answers it;
//                                   SetupDiDestroyDeviceInfoList forgets it)
//   SetupDiGetDeviceRegistryPropertyW
//                                   SPDRP_ENUMERATOR_NAME: the first part of the instance ID
//   SetupDiCallClassInstaller       DIF_INSTALLDEVICEFILES with DI_NOVCP and a FileQueue in the
//                                   install parameters: queues the selected driver's files in
//                                   that queue and copies nothing
//   SetupDiEnumDriverInfoW          DriverDate and DriverVersion from the INF's DriverVer
//   SetupDiGetDriverInfoDetailW     InfFileName with backslashes only; a driver that is no
//                                   member of the device's list is refused
//                                   (ERROR_INVALID_PARAMETER) where Wine faults
//   SetupDiBuildDriverInfoList      DI_FLAGSEX_INSTALLEDDRIVER: only the INF the device's
//                                   driver key names (InfPath) is read, none without one
// The module itself is unchanged and calls SetupAPI exactly as on Windows. On Windows the
// function does nothing. Returns whether the module runs under Wine (and was patched).
//
// Link the CMake target sorvane_wine_setupapi (built when SORVANE_FOR_WINE is on).
#pragma once

#include <windows.h>

namespace winesupport {

bool fillWineSetupApiGaps(HMODULE module);

} // namespace winesupport
