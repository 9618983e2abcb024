// The SetupAPI functions as Windows documents them where Wine 8 falls short; each hands the
// part Wine does well to Wine's own function (RealSetupApi).
#pragma once

#include <windows.h>
#include <setupapi.h>

namespace winesupport {

class SetupApiGaps {
public:
    static BOOL WINAPI setSelectedDriver(HDEVINFO set, SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_W *driver);
    static BOOL WINAPI getSelectedDriver(HDEVINFO set, SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_W *driver);
    static BOOL WINAPI destroyDeviceInfoList(HDEVINFO set);
    static BOOL WINAPI getDeviceRegistryProperty(HDEVINFO set, SP_DEVINFO_DATA *device, DWORD property, DWORD *type,
                                                 BYTE *buffer, DWORD size, DWORD *required);
    static BOOL WINAPI callClassInstaller(DI_FUNCTION function, HDEVINFO set, SP_DEVINFO_DATA *device);
    static BOOL WINAPI enumDriverInfo(HDEVINFO set, SP_DEVINFO_DATA *device, DWORD type, DWORD index,
                                      SP_DRVINFO_DATA_W *driver);
    static BOOL WINAPI getDriverInfoDetail(HDEVINFO set, SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_W *driver,
                                           SP_DRVINFO_DETAIL_DATA_W *detail, DWORD size, DWORD *required);
    static BOOL WINAPI buildDriverInfoList(HDEVINFO set, SP_DEVINFO_DATA *device, DWORD type);

private:
    static BOOL enumeratorName(HDEVINFO set, SP_DEVINFO_DATA *device, DWORD *type, BYTE *buffer, DWORD size,
                               DWORD *required);
    static bool isListed(HDEVINFO set, SP_DEVINFO_DATA *device, const SP_DRVINFO_DATA_W &wanted);
    static BOOL buildFromSingleInf(HDEVINFO set, SP_DEVINFO_DATA *device, const SP_DEVINSTALL_PARAMS_W &params,
                                   const wchar_t *inf);
    static bool findListed(HDEVINFO set, SP_DEVINFO_DATA *device, const SP_DRVINFO_DATA_W &wanted,
                           SP_DRVINFO_DATA_V2_W &listed);
    static bool infAndSection(HDEVINFO set, SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_W &driver, wchar_t *inf,
                              wchar_t *section);
    static BOOL queueDriverFiles(HDEVINFO set, SP_DEVINFO_DATA *device, HSPFILEQ queue);
};

} // namespace winesupport
