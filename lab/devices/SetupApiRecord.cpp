#include "devices/SetupApiRecord.h"

#include <cwctype>

#include "common/DeviceConfig.h"

namespace lab {

namespace {

// GUID_DEVCLASS_IMAGE, GUID_DEVCLASS_MEDIA and GUID_DEVCLASS_CAMERA (the class Windows 10 gives
// USB video devices).
const GUID kImageClass = {0x6bdd1fc6, 0x810f, 0x11d0, {0xbe, 0xc7, 0x08, 0x00, 0x2b, 0xe2, 0x09, 0x2f}};
const GUID kMediaClass = {0x4d36e96c, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};
const GUID kCameraClass = {0xca3e7ab9, 0xb4c3, 0x4ae6, {0x82, 0x51, 0x57, 0x9e, 0xf9, 0x33, 0x89, 0x0f}};

std::wstring upper(std::wstring text)
{
    for (wchar_t &c : text)
        c = static_cast<wchar_t>(std::towupper(c));
    return text;
}

std::wstring firstLine(const std::wstring &text)
{
    return text.substr(0, text.find(L'\n'));
}

bool isDecimalList(const std::wstring &text, wchar_t separator, size_t minParts, size_t maxParts)
{
    const std::vector<std::wstring> parts = DeviceConfig::split(text, separator);
    if (parts.size() < minParts || parts.size() > maxParts)
        return false;
    for (const std::wstring &part : parts) {
        if (part.empty() || part.size() > 5 || part.find_first_not_of(L"0123456789") != std::wstring::npos)
            return false;
    }
    return true;
}

// The "&"-separated fields of the device part (VEN_14F1, DEV_8800 ...) by their prefix.
std::wstring field(const std::vector<std::wstring> &fields, const wchar_t *prefix)
{
    for (const std::wstring &candidate : fields) {
        if (candidate.compare(0, wcslen(prefix), prefix) == 0)
            return candidate;
    }
    return std::wstring();
}

// A PCI function lists itself from the most specific ID down: with subsystem and revision,
// without revision, by class code (0400: multimedia video controller); the compatible IDs
// drop the subsystem, then the device.
void pciIds(SetupApiRecord &record, const std::wstring &devicePart)
{
    const std::vector<std::wstring> fields = DeviceConfig::split(devicePart, L'&');
    const std::wstring vendor = field(fields, L"VEN_"), device = field(fields, L"DEV_");
    const std::wstring subsystem = field(fields, L"SUBSYS_"), revision = field(fields, L"REV_");
    const std::wstring base = L"PCI\\" + vendor + L"&" + device;
    record.hardwareIds.push_back(L"PCI\\" + devicePart);
    if (!subsystem.empty() && !revision.empty())
        record.hardwareIds.push_back(base + L"&" + subsystem);
    record.hardwareIds.push_back(base + L"&CC_040000");
    record.hardwareIds.push_back(base + L"&CC_0400");
    if (!revision.empty())
        record.compatibleIds.push_back(base + L"&" + revision);
    record.compatibleIds.push_back(base);
    record.compatibleIds.push_back(L"PCI\\" + vendor + L"&CC_040000");
    record.compatibleIds.push_back(L"PCI\\" + vendor);
    record.compatibleIds.push_back(L"PCI\\CC_040000");
}

// A USB video function: its own ID, then the USB video class (0E, interface collection 03)
// for a camera, the vendor-specific class (FF) for anything else.
void usbIds(SetupApiRecord &record, const std::wstring &devicePart)
{
    record.hardwareIds.push_back(L"USB\\" + devicePart);
    const std::wstring usbClass =
        record.classGuid != kMediaClass ? L"USB\\Class_0E&SubClass_03" : L"USB\\Class_FF&SubClass_FF";
    const std::wstring classId = usbClass.substr(0, usbClass.find(L'&'));
    record.compatibleIds = {usbClass + L"&Prot_00", usbClass, classId};
}

void deriveIds(SetupApiRecord &record)
{
    const size_t first = record.instanceId.find(L'\\');
    const size_t second = record.instanceId.find(L'\\', first + 1);
    const std::wstring devicePart = record.instanceId.substr(first + 1, second - first - 1);
    if (record.enumerator == L"PCI")
        pciIds(record, devicePart);
    else if (record.enumerator == L"USB")
        usbIds(record, devicePart);
    else
        record.hardwareIds.push_back(record.enumerator + L"\\" + devicePart);
}

bool chooseClass(const DeviceDescription &device, SetupApiRecord &record, std::wstring &error)
{
    std::wstring name = upper(firstLine(device.value(L"class")));
    if (name.empty())
        name = device.kind == L"webcam" ? L"IMAGE" : L"MEDIA";
    if (name == L"IMAGE") {
        record.className = L"Image";
        record.classGuid = kImageClass;
    } else if (name == L"MEDIA") {
        record.className = L"MEDIA";
        record.classGuid = kMediaClass;
    } else if (name == L"CAMERA") {
        record.className = L"Camera";
        record.classGuid = kCameraClass;
    } else {
        error = L"device at line " + std::to_wstring(device.line) + L": class is IMAGE, MEDIA or CAMERA, not " + name;
        return false;
    }
    return true;
}

// Takes a value from the section unless an earlier section of the same hardware gave one.
void fill(std::wstring &target, const DeviceDescription &device, const wchar_t *key, const std::wstring &fallback)
{
    if (!target.empty())
        return;
    target = firstLine(device.value(key));
    if (target.empty())
        target = fallback;
}

bool checkDriverFacts(const DeviceDescription &device, const SetupApiRecord &record, std::wstring &error)
{
    const std::wstring where = L"device at line " + std::to_wstring(device.line) + L": ";
    if (!isDecimalList(record.driverVersion, L'.', 1, 4)) {
        error = where + L"driver.version is up to four numbers joined by '.', not " + record.driverVersion;
        return false;
    }
    if (!isDecimalList(record.driverDate, L'/', 3, 3)) {
        error = where + L"driver.date is MM/DD/YYYY, not " + record.driverDate;
        return false;
    }
    return true;
}

bool makeRecord(const DeviceDescription &device, const std::wstring &instanceId, SetupApiRecord &record,
                std::wstring &error)
{
    record.instanceId = instanceId;
    record.enumerator = instanceId.substr(0, instanceId.find(L'\\'));
    if (!chooseClass(device, record, error))
        return false;
    deriveIds(record);
    return true;
}

void fillFacts(const DeviceDescription &device, SetupApiRecord &record)
{
    const std::wstring name = firstLine(device.value(L"name"));
    fill(record.deviceDescription, device, L"device-description", name);
    fill(record.friendlyName, device, L"friendly-name", L"");
    fill(record.manufacturer, device, L"manufacturer", L"Sorvane Lab");
    if (_wcsicmp(firstLine(device.value(L"mfg")).c_str(), L"none") == 0)
        record.withoutMfg = true;
    fill(record.location, device, L"location", L"");
    fill(record.driverProvider, device, L"driver.provider", record.manufacturer);
    fill(record.driverDate, device, L"driver.date", L"01/01/2020");
    fill(record.driverVersion, device, L"driver.version", L"1.0.0.0");
    fill(record.driverFile, device, L"driver.file", L"sorvanelab.sys");
    const std::wstring file = record.copiesFile() ? record.driverFile : L"sorvanelab.sys";
    fill(record.service, device, L"service", file.substr(0, file.find_last_of(L'.')));
    record.sections += (record.sections.empty() ? L"" : L", ") + name;
}

} // namespace

std::wstring SetupApiRecord::instanceIdFromPath(const std::wstring &path)
{
    const std::vector<std::wstring> parts = DeviceConfig::split(path, L'#');
    if (parts.size() < 3)
        return std::wstring();
    const size_t slash = parts[0].find_last_of(L'\\');
    const std::wstring enumerator = slash == std::wstring::npos ? parts[0] : parts[0].substr(slash + 1);
    if (enumerator.empty() || parts[1].empty() || parts[2].empty())
        return std::wstring();
    return upper(enumerator + L"\\" + parts[1] + L"\\" + parts[2]);
}

std::wstring SetupApiRecord::packageKey() const
{
    return className + L"|" + manufacturer + L"|" + driverProvider + L"|" + driverDate + L"|" + driverVersion + L"|" +
           driverFile;
}

bool SetupApiRecord::copiesFile() const
{
    return _wcsicmp(driverFile.c_str(), L"none") != 0;
}

bool SetupApiRecord::fromDescription(const std::vector<DeviceDescription> &devices,
                                     std::vector<SetupApiRecord> &records, std::wstring &error)
{
    for (const DeviceDescription &device : devices) {
        std::wstring instanceId = upper(firstLine(device.value(L"instance")));
        if (instanceId.empty())
            instanceId = instanceIdFromPath(firstLine(device.value(L"path")));
        if (instanceId.empty())
            continue;
        SetupApiRecord *record = nullptr;
        for (SetupApiRecord &existing : records)
            record = existing.instanceId == instanceId ? &existing : record;
        if (!record) {
            records.emplace_back();
            if (!makeRecord(device, instanceId, records.back(), error))
                return false;
            record = &records.back();
        }
        fillFacts(device, *record);
        if (!checkDriverFacts(device, *record, error))
            return false;
    }
    return true;
}

} // namespace lab
