#include "devices/SetupApiWriter.h"

#include <cwctype>
#include <map>

#include "common/DeviceConfig.h"
#include "common/GuidText.h"
#include "common/RegistryKey.h"
#include "devices/DriverPackage.h"

namespace lab {

namespace {

const wchar_t kClassRoot[] = L"System\\CurrentControlSet\\Control\\Class\\";

// The registry spells class GUIDs in lower case ("{4d36e96c-e325-11ce-bfc1-08002be10318}").
std::wstring lowerGuid(const GUID &guid)
{
    return DeviceConfig::lower(guidText(guid));
}

// The numbers in use below a key whose subkeys are numbered (driver keys "0000", INF files
// "oem12.inf"), so new ones never collide with what is there.
unsigned nextDriverNumber(const std::wstring &classKey)
{
    unsigned next = 0;
    RegistryKey key;
    if (RegistryKey::open(HKEY_LOCAL_MACHINE, classKey, KEY_READ, key) != ERROR_SUCCESS)
        return next;
    for (DWORD index = 0;; ++index) {
        wchar_t name[256] = {};
        DWORD length = 256;
        if (RegEnumKeyExW(key.handle(), index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        wchar_t *end = nullptr;
        const unsigned long number = std::wcstoul(name, &end, 10);
        if (end != name && *end == L'\0' && number + 1 > next)
            next = static_cast<unsigned>(number + 1);
    }
    return next;
}

unsigned nextInfNumber(const std::wstring &folder)
{
    unsigned next = 0;
    WIN32_FIND_DATAW found = {};
    HANDLE search = FindFirstFileW((folder + L"\\oem*.inf").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return next;
    do {
        const unsigned long number = std::wcstoul(found.cFileName + 3, nullptr, 10);
        if (number + 1 > next)
            next = static_cast<unsigned>(number + 1);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return next;
}

std::wstring fourDigits(unsigned number)
{
    wchar_t text[16] = {};
    swprintf(text, 16, L"%04u", number);
    return text;
}

// The class keys a driver's installation creates; a fresh Wine prefix lacks MEDIA.
LSTATUS writeClassKey(const SetupApiRecord &record)
{
    RegistryKey key;
    LSTATUS status = RegistryKey::create(HKEY_LOCAL_MACHINE, kClassRoot + lowerGuid(record.classGuid), key);
    const bool media = record.className == L"MEDIA";
    const wchar_t *title = record.className == L"Image" ? L"Imaging devices" : L"Cameras";
    if (status == ERROR_SUCCESS)
        status = key.setString(nullptr, media ? L"Sound, video and game controllers" : title);
    if (status == ERROR_SUCCESS)
        status = key.setString(L"Class", record.className);
    if (status == ERROR_SUCCESS)
        status = key.setString(L"Icon", media ? L"-1" : L"-500");
    return status;
}

// "DriverDate" is M-D-YYYY without leading zeros, "DriverDateData" the same day as a FILETIME.
void driverDate(const std::wstring &infDate, std::wstring &text, FILETIME &time)
{
    const std::vector<std::wstring> parts = DeviceConfig::split(infDate, L'/');
    SYSTEMTIME day = {};
    day.wMonth = static_cast<WORD>(std::wcstoul(parts[0].c_str(), nullptr, 10));
    day.wDay = static_cast<WORD>(std::wcstoul(parts[1].c_str(), nullptr, 10));
    day.wYear = static_cast<WORD>(std::wcstoul(parts[2].c_str(), nullptr, 10));
    text = std::to_wstring(day.wMonth) + L"-" + std::to_wstring(day.wDay) + L"-" + std::to_wstring(day.wYear);
    time = FILETIME{};
    SystemTimeToFileTime(&day, &time);
}

LSTATUS writeDriverKey(const SetupApiRecord &record, const std::wstring &path, const std::wstring &infName)
{
    RegistryKey key;
    LSTATUS status = RegistryKey::create(HKEY_LOCAL_MACHINE, path, key);
    std::wstring dateText;
    FILETIME date = {};
    driverDate(record.driverDate, dateText, date);
    const std::pair<const wchar_t *, std::wstring> values[] = {
        {L"DriverDesc", record.deviceDescription},
        {L"ProviderName", record.driverProvider},
        {L"DriverDate", dateText},
        {L"DriverVersion", record.driverVersion},
        {L"InfPath", infName},
        {L"InfSection", DriverPackage::installSection()},
        {L"InfSectionExt", DriverPackage::installSectionExtension()},
        {L"MatchingDeviceId", DeviceConfig::lower(record.hardwareIds.front())},
    };
    for (const auto &value : values) {
        if (status == ERROR_SUCCESS)
            status = key.setString(value.first, value.second);
    }
    if (status == ERROR_SUCCESS)
        status = key.setBinary(L"DriverDateData", &date, sizeof(date));
    return status;
}

LSTATUS writeDeviceKey(const SetupApiRecord &record, const RegistryKey &key, const std::wstring &driver)
{
    std::vector<std::pair<const wchar_t *, std::wstring>> values = {{L"DeviceDesc", record.deviceDescription},
                                                                    {L"ClassGUID", lowerGuid(record.classGuid)},
                                                                    {L"Class", record.className},
                                                                    {L"Driver", driver},
                                                                    {L"Service", record.service}};
    if (!record.withoutMfg)
        values.emplace_back(L"Mfg", record.manufacturer);
    if (!record.friendlyName.empty())
        values.emplace_back(L"FriendlyName", record.friendlyName);
    if (!record.location.empty())
        values.emplace_back(L"LocationInformation", record.location);
    LSTATUS status = ERROR_SUCCESS;
    for (const auto &value : values) {
        if (status == ERROR_SUCCESS)
            status = key.setString(value.first, value.second);
    }
    if (status == ERROR_SUCCESS)
        status = key.setMultiString(L"HardwareID", record.hardwareIds);
    if (status == ERROR_SUCCESS && !record.compatibleIds.empty())
        status = key.setMultiString(L"CompatibleIDs", record.compatibleIds);
    if (status == ERROR_SUCCESS)
        status = key.setDword(L"ConfigFlags", 0);
    return status;
}

// Records grouped by driver package, in the order their packages first appear.
std::vector<DriverPackage> packages(const std::vector<SetupApiRecord> &records)
{
    std::map<std::wstring, size_t> indexes;
    std::vector<std::vector<const SetupApiRecord *>> groups;
    for (const SetupApiRecord &record : records) {
        const auto found = indexes.emplace(record.packageKey(), groups.size());
        if (found.second)
            groups.emplace_back();
        groups[found.first->second].push_back(&record);
    }
    return std::vector<DriverPackage>(groups.begin(), groups.end());
}

} // namespace

std::wstring SetupApiWriter::enumKey(const std::wstring &instanceId)
{
    return L"System\\CurrentControlSet\\Enum\\" + instanceId;
}

std::wstring SetupApiWriter::infFolder()
{
    wchar_t windows[MAX_PATH] = {};
    GetWindowsDirectoryW(windows, MAX_PATH);
    return std::wstring(windows) + L"\\inf";
}

HRESULT SetupApiWriter::writeRecord(const SetupApiRecord &record, const std::wstring &driver,
                                    const std::wstring &infName, bool keepExisting, WrittenItems &written,
                                    std::wstring &error)
{
    RegistryKey device;
    if (keepExisting &&
        RegistryKey::open(HKEY_LOCAL_MACHINE, enumKey(record.instanceId), KEY_READ, device) == ERROR_SUCCESS) {
        error = record.sections + L": the device " + record.instanceId + L" exists already";
        return HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);
    }
    LSTATUS status = writeDriverKey(record, kClassRoot + driver, infName);
    if (status == ERROR_SUCCESS)
        written.keys.push_back(kClassRoot + driver);
    if (status == ERROR_SUCCESS)
        status = RegistryKey::create(HKEY_LOCAL_MACHINE, enumKey(record.instanceId), device);
    if (status == ERROR_SUCCESS)
        written.keys.push_back(enumKey(record.instanceId));
    if (status == ERROR_SUCCESS)
        status = writeDeviceKey(record, device, driver);
    if (status != ERROR_SUCCESS) {
        error = record.sections + L": cannot write the SetupAPI record of " + record.instanceId;
        return HRESULT_FROM_WIN32(status);
    }
    return S_OK;
}

HRESULT SetupApiWriter::write(const std::vector<SetupApiRecord> &records, bool keepExisting, WrittenItems &written,
                              std::wstring &error)
{
    const std::wstring folder = infFolder();
    unsigned infNumber = nextInfNumber(folder);
    std::map<std::wstring, unsigned> driverNumbers;
    for (const DriverPackage &package : packages(records)) {
        const std::wstring infName = L"oem" + std::to_wstring(infNumber++) + L".inf";
        if (!package.writeTo(folder + L"\\" + infName)) {
            error = L"cannot write the driver package " + folder + L"\\" + infName;
            return E_FAIL;
        }
        written.files.push_back(folder + L"\\" + infName);
        for (const SetupApiRecord *record : package.records()) {
            // Driver keys are numbered per class, after those already there.
            const std::wstring classKey = kClassRoot + lowerGuid(record->classGuid);
            const auto number = driverNumbers.emplace(classKey, 0);
            if (number.second && writeClassKey(*record) != ERROR_SUCCESS) {
                error = L"cannot write the class key " + classKey;
                return E_FAIL;
            }
            if (number.second)
                number.first->second = nextDriverNumber(classKey);
            const std::wstring driver = lowerGuid(record->classGuid) + L"\\" + fourDigits(number.first->second++);
            const HRESULT hr = writeRecord(*record, driver, infName, keepExisting, written, error);
            if (FAILED(hr))
                return hr;
        }
    }
    return S_OK;
}

} // namespace lab
