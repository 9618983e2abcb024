#include "setupapi/SetupApiGaps.h"

#include <cstring>
#include <cwchar>
#include <vector>

#include "setupapi/InfFile.h"
#include "setupapi/InstalledDriverInf.h"
#include "setupapi/RealSetupApi.h"
#include "setupapi/SelectedDrivers.h"

namespace winesupport {

namespace {

const RealSetupApi &wine()
{
    return RealSetupApi::get();
}

// MAX_DEVICE_ID_LEN of cfgmgr32.h.
const DWORD kMaxInstanceId = 200;

// Keeps the caller's last error across calls made only to look something up.
class KeptLastError {
public:
    KeptLastError() : m_error(GetLastError()) {}
    ~KeptLastError() { SetLastError(m_error); }
    KeptLastError(const KeptLastError &) = delete;
    KeptLastError &operator=(const KeptLastError &) = delete;

private:
    DWORD m_error;
};

// A driver detail buffer with room for a long hardware ID list, aligned as the structure.
class DetailBuffer {
public:
    DetailBuffer() : m_storage(1024, 0) { detail()->cbSize = sizeof(SP_DRVINFO_DETAIL_DATA_W); }
    SP_DRVINFO_DETAIL_DATA_W *detail() { return reinterpret_cast<SP_DRVINFO_DETAIL_DATA_W *>(m_storage.data()); }
    DWORD size() const { return static_cast<DWORD>(m_storage.size() * sizeof(m_storage[0])); }

private:
    std::vector<ULONGLONG> m_storage;
};

bool sameDriver(const SP_DRVINFO_DATA_W &wanted, const SP_DRVINFO_DATA_V2_W &listed)
{
    if (wanted.Reserved)
        return wanted.Reserved == listed.Reserved;
    return std::wcscmp(wanted.Description, listed.Description) == 0 &&
           std::wcscmp(wanted.MfgName, listed.MfgName) == 0 &&
           std::wcscmp(wanted.ProviderName, listed.ProviderName) == 0;
}

// A V1 caller gets the fields it has room for.
void copyDriver(const SP_DRVINFO_DATA_V2_W &from, SP_DRVINFO_DATA_W &to)
{
    const DWORD size = to.cbSize < sizeof(from) ? to.cbSize : sizeof(from);
    std::memcpy(&to, &from, size);
    to.cbSize = size;
}

} // namespace

BOOL SetupApiGaps::enumeratorName(HDEVINFO set, SP_DEVINFO_DATA *device, DWORD *type, BYTE *buffer, DWORD size,
                                  DWORD *required)
{
    wchar_t instanceId[kMaxInstanceId] = {};
    if (!SetupDiGetDeviceInstanceIdW(set, device, instanceId, kMaxInstanceId, nullptr))
        return FALSE;
    const wchar_t *slash = std::wcschr(instanceId, L'\\');
    const size_t length = slash ? static_cast<size_t>(slash - instanceId) : std::wcslen(instanceId);
    const DWORD bytes = static_cast<DWORD>((length + 1) * sizeof(wchar_t));
    if (type)
        *type = REG_SZ;
    if (required)
        *required = bytes;
    if (!buffer || size < bytes) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    std::memcpy(buffer, instanceId, length * sizeof(wchar_t));
    reinterpret_cast<wchar_t *>(buffer)[length] = L'\0';
    return TRUE;
}

BOOL WINAPI SetupApiGaps::getDeviceRegistryProperty(HDEVINFO set, SP_DEVINFO_DATA *device, DWORD property, DWORD *type,
                                                    BYTE *buffer, DWORD size, DWORD *required)
{
    if (property == SPDRP_ENUMERATOR_NAME)
        return enumeratorName(set, device, type, buffer, size, required);
    return wine().getDeviceRegistryProperty(set, device, property, type, buffer, size, required);
}

bool SetupApiGaps::isListed(HDEVINFO set, SP_DEVINFO_DATA *device, const SP_DRVINFO_DATA_W &wanted)
{
    const KeptLastError kept;
    const DWORD type = wanted.DriverType ? wanted.DriverType : SPDIT_COMPATDRIVER;
    for (DWORD index = 0;; ++index) {
        SP_DRVINFO_DATA_V2_W listed = {};
        listed.cbSize = sizeof(listed);
        if (!wine().enumDriverInfo(set, device, type, index, &listed))
            return false;
        if (sameDriver(wanted, listed))
            return true;
    }
}

BOOL WINAPI SetupApiGaps::getDriverInfoDetail(HDEVINFO set, SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_W *driver,
                                              SP_DRVINFO_DETAIL_DATA_W *detail, DWORD size, DWORD *required)
{
    // Wine takes the driver for one of its list entries as it stands and faults on one that
    // names none (a device that matched no driver); Windows looks it up and refuses it.
    if (!driver || driver->cbSize < sizeof(SP_DRVINFO_DATA_V1_W) || !isListed(set, device, *driver)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const BOOL result = wine().getDriverInfoDetail(set, device, driver, detail, size, required);
    const DWORD error = GetLastError();
    // Wine joins its INF folder "C:/windows/inf" and the file name with a backslash.
    if (detail && (result || error == ERROR_INSUFFICIENT_BUFFER)) {
        for (wchar_t &c : detail->InfFileName) {
            if (c == L'/')
                c = L'\\';
        }
    }
    SetLastError(error);
    return result;
}

BOOL WINAPI SetupApiGaps::enumDriverInfo(HDEVINFO set, SP_DEVINFO_DATA *device, DWORD type, DWORD index,
                                         SP_DRVINFO_DATA_W *driver)
{
    if (!wine().enumDriverInfo(set, device, type, index, driver))
        return FALSE;
    if (driver->cbSize < sizeof(SP_DRVINFO_DATA_V2_W))
        return TRUE;
    // Wine leaves DriverDate and DriverVersion as the caller had them: they come from the
    // INF's DriverVer line.
    const KeptLastError kept;
    DetailBuffer buffer;
    DWORD required = 0;
    if (!wine().getDriverInfoDetail(set, device, driver, buffer.detail(), buffer.size(), &required) &&
        GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return TRUE;
    FILETIME date = {};
    DWORDLONG version = 0;
    if (InfFile(buffer.detail()->InfFileName).driverVer(date, version)) {
        driver->DriverDate = date;
        driver->DriverVersion = version;
    }
    return TRUE;
}

BOOL WINAPI SetupApiGaps::buildDriverInfoList(HDEVINFO set, SP_DEVINFO_DATA *device, DWORD type)
{
    SP_DEVINSTALL_PARAMS_W params = {};
    params.cbSize = sizeof(params);
    if (type != SPDIT_COMPATDRIVER || !device || !SetupDiGetDeviceInstallParamsW(set, device, &params) ||
        !(params.FlagsEx & DI_FLAGSEX_INSTALLEDDRIVER))
        return wine().buildDriverInfoList(set, device, type);
    // Wine reads every INF of the INF folder whatever the flag says; Windows lists only the
    // installed driver, from the INF its driver key names. Wine adds to the list each time,
    // as DI_FLAGSEX_APPENDDRIVERLIST asks.
    const std::wstring inf = InstalledDriverInf::pathOf(set, device);
    if (inf.empty() || inf.size() >= MAX_PATH)
        return TRUE;
    return buildFromSingleInf(set, device, params, inf.c_str());
}

BOOL SetupApiGaps::buildFromSingleInf(HDEVINFO set, SP_DEVINFO_DATA *device, const SP_DEVINSTALL_PARAMS_W &params,
                                      const wchar_t *inf)
{
    SP_DEVINSTALL_PARAMS_W single = params;
    single.Flags |= DI_ENUMSINGLEINF;
    std::wcscpy(single.DriverPath, inf);
    if (!SetupDiSetDeviceInstallParamsW(set, device, &single))
        return FALSE;
    const BOOL built = wine().buildDriverInfoList(set, device, SPDIT_COMPATDRIVER);
    // The caller's own parameters come back whatever the build did.
    const KeptLastError kept;
    SP_DEVINSTALL_PARAMS_W restored = params;
    SetupDiSetDeviceInstallParamsW(set, device, &restored);
    return built;
}

bool SetupApiGaps::findListed(HDEVINFO set, SP_DEVINFO_DATA *device, const SP_DRVINFO_DATA_W &wanted,
                              SP_DRVINFO_DATA_V2_W &listed)
{
    const DWORD type = wanted.DriverType ? wanted.DriverType : SPDIT_COMPATDRIVER;
    for (DWORD index = 0;; ++index) {
        listed = SP_DRVINFO_DATA_V2_W{};
        listed.cbSize = sizeof(listed);
        if (!enumDriverInfo(set, device, type, index, &listed))
            return false;
        if (sameDriver(wanted, listed))
            return true;
    }
}

BOOL WINAPI SetupApiGaps::setSelectedDriver(HDEVINFO set, SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_W *driver)
{
    if (!driver) {
        SelectedDrivers::instance().forget(set, device);
        return TRUE;
    }
    SP_DRVINFO_DATA_V2_W listed = {};
    if (driver->cbSize < sizeof(SP_DRVINFO_DATA_V1_W) || !findListed(set, device, *driver, listed)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    // Selected by its description: the caller learns which list entry it was.
    driver->Reserved = listed.Reserved;
    SelectedDrivers::instance().remember(set, device, listed);
    return TRUE;
}

BOOL WINAPI SetupApiGaps::getSelectedDriver(HDEVINFO set, SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_W *driver)
{
    SP_DRVINFO_DATA_V2_W selected = {};
    if (!SelectedDrivers::instance().find(set, device, selected))
        return wine().getSelectedDriver(set, device, driver);
    copyDriver(selected, *driver);
    return TRUE;
}

BOOL WINAPI SetupApiGaps::destroyDeviceInfoList(HDEVINFO set)
{
    SelectedDrivers::instance().forgetSet(set);
    return wine().destroyDeviceInfoList(set);
}

bool SetupApiGaps::infAndSection(HDEVINFO set, SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_W &driver, wchar_t *inf,
                                 wchar_t *section)
{
    DetailBuffer buffer;
    DWORD required = 0;
    if (!wine().getDriverInfoDetail(set, device, &driver, buffer.detail(), buffer.size(), &required) &&
        GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return false;
    std::wcscpy(inf, buffer.detail()->InfFileName);
    std::wcscpy(section, buffer.detail()->SectionName);
    return true;
}

BOOL SetupApiGaps::queueDriverFiles(HDEVINFO set, SP_DEVINFO_DATA *device, HSPFILEQ queue)
{
    SP_DRVINFO_DATA_V2_W driver = {};
    driver.cbSize = sizeof(driver);
    if (!getSelectedDriver(set, device, &driver))
        return FALSE;
    wchar_t inf[MAX_PATH] = {};
    wchar_t section[LINE_LEN] = {};
    if (!infAndSection(set, device, driver, inf, section))
        return FALSE;
    const InfFile file(inf);
    return file.isOpen() && file.queueInstallFiles(section, queue);
}

BOOL WINAPI SetupApiGaps::callClassInstaller(DI_FUNCTION function, HDEVINFO set, SP_DEVINFO_DATA *device)
{
    if (function != DIF_INSTALLDEVICEFILES)
        return wine().callClassInstaller(function, set, device);
    SP_DEVINSTALL_PARAMS_W params = {};
    params.cbSize = sizeof(params);
    if (!SetupDiGetDeviceInstallParamsW(set, device, &params))
        return FALSE;
    // Without DI_NOVCP the files are copied at once, which Wine does.
    if (!(params.Flags & DI_NOVCP))
        return wine().callClassInstaller(function, set, device);
    if (!params.FileQueue || params.FileQueue == INVALID_HANDLE_VALUE) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return queueDriverFiles(set, device, params.FileQueue);
}

} // namespace winesupport
