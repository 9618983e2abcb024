#include "setupapi/RealSetupApi.h"

namespace winesupport {

namespace {

template <class Function>
void resolve(HMODULE dll, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(dll, name)));
}

RealSetupApi load()
{
    RealSetupApi api;
    HMODULE dll = LoadLibraryW(L"setupapi.dll");
    resolve(dll, "SetupDiGetDeviceRegistryPropertyW", api.getDeviceRegistryProperty);
    resolve(dll, "SetupDiCallClassInstaller", api.callClassInstaller);
    resolve(dll, "SetupDiEnumDriverInfoW", api.enumDriverInfo);
    resolve(dll, "SetupDiBuildDriverInfoList", api.buildDriverInfoList);
    resolve(dll, "SetupDiGetDriverInfoDetailW", api.getDriverInfoDetail);
    resolve(dll, "SetupDiGetSelectedDriverW", api.getSelectedDriver);
    resolve(dll, "SetupDiDestroyDeviceInfoList", api.destroyDeviceInfoList);
    return api;
}

} // namespace

const RealSetupApi &RealSetupApi::get()
{
    static const RealSetupApi api = load();
    return api;
}

} // namespace winesupport
