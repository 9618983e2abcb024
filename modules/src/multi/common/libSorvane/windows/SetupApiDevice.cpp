#include "SetupApiDevice.h"
#include "CaptureLog.h"
#include "DeviceIdParser.h"
#include "LocalMemory.h"
#include "ScopedDeviceInfoList.h"
#include "ScopedFileQueue.h"

#include <kel/String.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

// Every line of device enumeration is detail, numbered for the readers of the log.
#define SETUPAPI_LOG(number, message) SORVANE_LOG_NUMBERED(kel::LOG_DETAIL, number, message)

namespace sorvane {

namespace {

const size_t kInstanceIdChars = 1024;
const int kInstanceIdRetries = 10;
const int kDateChars = 255;
// SP_DRVINFO_DETAIL_DATA_W with room for a one-character hardware ID list: a longer list is
// cut off (ERROR_INSUFFICIENT_BUFFER), which leaves the INF name intact.
const DWORD kDriverDetailBytes = sizeof(SP_DRVINFO_DETAIL_DATA_W);

// The target path of the last file a driver installation queued. Shared by every device on
// purpose: a device whose queue is empty reports the file of the device before it.
kel::String &lastQueuedFile()
{
    static kel::String path;
    return path;
}

UINT CALLBACK scanQueuedFile(PVOID context, UINT notification, UINT_PTR targetPath, UINT_PTR)
{
    if (notification != SPFILENOTIFY_QUEUESCAN)
        return NO_ERROR;
    if (context) {
        ++*static_cast<DWORD *>(context);
    } else if (targetPath) {
        lastQueuedFile() = kel::String(reinterpret_cast<const wchar_t *>(targetPath));
    }
    return NO_ERROR;
}

SP_DEVINSTALL_PARAMS_W emptyInstallParams()
{
    SP_DEVINSTALL_PARAMS_W params;
    ZeroMemory(&params, sizeof(params));
    params.cbSize = sizeof(params);
    return params;
}

bool addInstallFlagsEx(HDEVINFO set, SP_DEVINFO_DATA &data, SP_DEVINSTALL_PARAMS_W &params, DWORD flags)
{
    params.FlagsEx |= flags;
    return SetupDiSetDeviceInstallParamsW(set, &data, &params) != FALSE;
}

// Finds the driver installed for the device: the first member of its compatible-driver list,
// built once for the installed driver and once more appending. Each step runs only when the
// one before succeeded; the first failure is logged and ends the search.
bool findInstalledDriver(HDEVINFO set, SP_DEVINFO_DATA &data, SP_DRVINFO_DATA_V2_W &driverInfo)
{
    SP_DEVINSTALL_PARAMS_W params = emptyInstallParams();
    if (!SetupDiGetDeviceInstallParamsW(set, &data, &params)) {
        SETUPAPI_LOG(490, "SetupDiGetDeviceInstallParams failed: " << GetLastError());
        return false;
    }
    if (!addInstallFlagsEx(set, data, params, DI_FLAGSEX_INSTALLEDDRIVER)) {
        SETUPAPI_LOG(486, "SetupDiSetDeviceInstallParams: " << GetLastError());
        return false;
    }
    if (!SetupDiBuildDriverInfoList(set, &data, SPDIT_COMPATDRIVER)) {
        SETUPAPI_LOG(482, "SetupDiBuildDriverInfoList: " << GetLastError());
        return false;
    }
    if (!addInstallFlagsEx(set, data, params, DI_FLAGSEX_APPENDDRIVERLIST)) {
        SETUPAPI_LOG(478, "SetupDiSetDeviceInstallParams: " << GetLastError());
        return false;
    }
    if (!SetupDiBuildDriverInfoList(set, &data, SPDIT_COMPATDRIVER)) {
        SETUPAPI_LOG(474, "SetupDiBuildDriverInfoList: " << GetLastError());
        return false;
    }
    if (!SetupDiEnumDriverInfoW(set, &data, SPDIT_COMPATDRIVER, 0, &driverInfo)) {
        SETUPAPI_LOG(467, "SetupDiEnumDriverInfo: " << GetLastError());
        return false;
    }
    SETUPAPI_LOG(470, "Found driver info");
    return true;
}

kel::String versionText(DWORDLONG version)
{
    kel::String text;
    for (int shift = 48; shift >= 0; shift -= 16) {
        if (shift != 48)
            text += L".";
        text += kel::String::fromUInt((version >> shift) & 0xFFFF);
    }
    return text;
}

kel::String shortDate(const FILETIME &date)
{
    SYSTEMTIME time;
    ZeroMemory(&time, sizeof(time));
    FileTimeToSystemTime(&date, &time);
    wchar_t buffer[kDateChars] = {0};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, buffer, kDateChars);
    return kel::String(buffer);
}

kel::String labelled(const wchar_t *label, const kel::String &value)
{
    return kel::String(label) + value;
}

kel::String joined(const kel::Array<kel::String> &parts, const kel::String &separator, const kel::String &indent)
{
    kel::String text;
    for (int i = 0; i < parts.size(); ++i) {
        if (i)
            text += separator;
        text += indent + parts[i];
    }
    return text;
}

} // namespace

void SetupApiDevice::enumerateDevices(kel::Array<SetupApiDevice> &out, const kel::Array<SetupApiDevType> &devTypes,
                                      const kel::Array<SetupApiEnumType> &enumTypes)
{
    SETUPAPI_LOG(103, "Enumerating SetupApi Devices");
    for (const SetupApiDevType &devType : devTypes) {
        // A failed pass is logged where it failed; the other passes still run.
        for (const SetupApiEnumType &enumType : enumTypes)
            enumerateDevicesWithTypes(out, devType, enumType);
    }
}

const kel::Array<SetupApiDevType> &SetupApiDevice::allDeviceTypes()
{
    static kel::Array<SetupApiDevType> types;
    if (types.isEmpty())
        types.add(SetupApiDevType::ALL());
    return types;
}

const kel::Array<SetupApiEnumType> &SetupApiDevice::allEnumTypes()
{
    static kel::Array<SetupApiEnumType> types;
    if (types.isEmpty())
        types.add(SetupApiEnumType::ALL());
    return types;
}

bool SetupApiDevice::enumerateDevicesWithTypes(kel::Array<SetupApiDevice> &out, const SetupApiDevType &devType,
                                               const SetupApiEnumType &enumType)
{
    SETUPAPI_LOG(116, "Enumerating Devices with Type " << devType.name() << " : " << enumType.name());
    DWORD flags = DIGCF_PRESENT;
    if (devType == SetupApiDevType::ALL())
        flags |= DIGCF_ALLCLASSES;

    const wchar_t *enumerator = nullptr;
    if (enumType != SetupApiEnumType::ALL()) {
        if (enumType.isPlaceHolder()) {
            SETUPAPI_LOG(131, "Invalid SetupApiEnumType: " << enumType.toString());
            return false;
        }
        enumerator = enumType.name().c_str();
    }

    ScopedDeviceInfoList devices(SetupDiGetClassDevsW(devType.classGuid(), enumerator, nullptr, flags));
    if (!devices.isValid()) {
        SETUPAPI_LOG(135, "SetupDiGetClassDevs failed: " << GetLastError());
        return false;
    }

    for (DWORD index = 0;; ++index) {
        SP_DEVINFO_DATA data;
        ZeroMemory(&data, sizeof(data));
        data.cbSize = sizeof(data);
        if (!SetupDiEnumDeviceInfo(devices.get(), index, &data))
            break;
        SETUPAPI_LOG(142, "Setup API Device " << index << ":");
        SetupApiDevice device;
        device.create(devices.get(), data, devType, enumType);
        out.add(device);
        SETUPAPI_LOG(146, "");
        SETUPAPI_LOG(147, "SetupApi Device: " << device.name() << "\n" << device.toFormattedString(kel::String(L"  ")));
        SETUPAPI_LOG(148, "");
    }
    const DWORD error = GetLastError();
    if (error == ERROR_SUCCESS || error == ERROR_NO_MORE_ITEMS)
        return true;
    SETUPAPI_LOG(154, "SetupDiEnumDeviceInfo failed: " << error);
    return false;
}

SetupApiDevice::SetupApiDevice() {}

void SetupApiDevice::create(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData, const SetupApiDevType &devType,
                            const SetupApiEnumType &enumType)
{
    if (!getDeviceInstanceID(deviceInfoSet, deviceInfoData))
        SETUPAPI_LOG(166, "Could not get device instance id");
    m_guid = m_deviceInstanceId;
    if (!getSetupApiProperty(deviceInfoSet, deviceInfoData, SPDRP_FRIENDLYNAME, kel::String(L"FriendlyName"), m_name))
        getSetupApiProperty(deviceInfoSet, deviceInfoData, SPDRP_DEVICEDESC, kel::String(L"DescName"), m_name);
    getSetupApiProperty(deviceInfoSet, deviceInfoData, SPDRP_MFG, kel::String(L"Manufacturer"), m_manufacturer);
    getSetupApiProperty(deviceInfoSet, deviceInfoData, SPDRP_LOCATION_INFORMATION, kel::String(L"LocationInfo"),
                        m_locationInfo);
    readDeviceClass(deviceInfoSet, deviceInfoData, devType);
    readEnumerator(deviceInfoSet, deviceInfoData, enumType);
    getDeviceDriverInfo(deviceInfoSet, deviceInfoData);
    parseSetupApiInfo();
}

// A class other than the one asked for is only reported: the requested class is kept.
void SetupApiDevice::readDeviceClass(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData,
                                     const SetupApiDevType &devType)
{
    kel::String deviceClass;
    if (!getSetupApiProperty(deviceInfoSet, deviceInfoData, SPDRP_CLASS, kel::String(L"DeviceType"), deviceClass))
        return;
    if (devType.isPlaceHolder()) {
        m_deviceType = SetupApiDevType::fromString(deviceClass);
        return;
    }
    m_deviceType = devType;
    if (deviceClass.toUpper() != devType.name())
        SETUPAPI_LOG(186, "The device class returned does not match the device class requested");
}

void SetupApiDevice::readEnumerator(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData,
                                    const SetupApiEnumType &enumType)
{
    kel::String enumerator;
    if (!getSetupApiProperty(deviceInfoSet, deviceInfoData, SPDRP_ENUMERATOR_NAME, kel::String(L"EnumeratorName"),
                             enumerator))
        return;
    if (enumType.isPlaceHolder()) {
        m_enumeratorType = SetupApiEnumType::fromString(enumerator);
        return;
    }
    m_enumeratorType = enumType;
    if (enumerator.toUpper() != enumType.name())
        SETUPAPI_LOG(199, "The enumerator returned does not match the enumerator requested");
}

bool SetupApiDevice::getDeviceInstanceID(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData)
{
    DWORD chars = kInstanceIdChars;
    LocalMemory buffer(chars * sizeof(wchar_t));
    for (int retries = 0;; ++retries) {
        DWORD required = 0;
        if (buffer.size() &&
            SetupDiGetDeviceInstanceIdW(deviceInfoSet, &deviceInfoData, buffer.as<wchar_t>(), chars, &required))
            break;
        if (!buffer.size() || GetLastError() != ERROR_INSUFFICIENT_BUFFER || retries == kInstanceIdRetries) {
            m_deviceInstanceId = kel::String();
            return false;
        }
        chars = required;
        buffer.reallocate(static_cast<size_t>(chars) * sizeof(wchar_t));
    }
    m_deviceInstanceId = kel::String(buffer.as<wchar_t>());
    SETUPAPI_LOG(366, "Device Instance Id: " << m_deviceInstanceId);
    return true;
}

bool SetupApiDevice::getSetupApiProperty(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData, DWORD property,
                                         const kel::String &keyName, kel::String &out)
{
    DWORD required = 0;
    out = kel::String();
    // A property that fits in no buffer at all is an empty value, and read.
    if (!SetupDiGetDeviceRegistryPropertyW(deviceInfoSet, &deviceInfoData, property, nullptr, nullptr, 0, &required)) {
        if (GetLastError() != ERROR_INSUFFICIENT_BUFFER)
            return false;
        // Two more zero bytes keep the text terminated whatever the registry holds.
        LocalMemory buffer(required + sizeof(wchar_t));
        if (!buffer.size() || !SetupDiGetDeviceRegistryPropertyW(deviceInfoSet, &deviceInfoData, property, nullptr,
                                                                 buffer.as<BYTE>(), required, nullptr))
            return false;
        // A multi-string gives its first string.
        out = kel::String(buffer.as<wchar_t>());
    }
    SETUPAPI_LOG(406, "SetupApiProperty: " << keyName << ": " << out);
    return true;
}

bool SetupApiDevice::getDeviceDriverInfo(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData)
{
    SP_DRVINFO_DATA_V2_W driverInfo;
    ZeroMemory(&driverInfo, sizeof(driverInfo));
    driverInfo.cbSize = sizeof(driverInfo);
    const bool found = findInstalledDriver(deviceInfoSet, deviceInfoData, driverInfo);
    // Without a driver the empty driver info still gives its (zero) version and date.
    takeDriverFacts(driverInfo);
    readDriverInfFile(deviceInfoSet, deviceInfoData, driverInfo);
    readDriverFile(deviceInfoSet, deviceInfoData, driverInfo);
    return found;
}

void SetupApiDevice::takeDriverFacts(const SP_DRVINFO_DATA_V2_W &driverInfo)
{
    m_driverProvider = kel::String(driverInfo.ProviderName);
    m_driverVersion = versionText(driverInfo.DriverVersion);
    if (m_manufacturer.isEmpty())
        m_manufacturer = kel::String(driverInfo.MfgName);
    m_driverDate = shortDate(driverInfo.DriverDate);
}

void SetupApiDevice::readDriverInfFile(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData,
                                       SP_DRVINFO_DATA_V2_W &driverInfo)
{
    LocalMemory buffer(kDriverDetailBytes);
    SP_DRVINFO_DETAIL_DATA_W *detail = buffer.as<SP_DRVINFO_DETAIL_DATA_W>();
    if (!detail)
        return;
    detail->cbSize = sizeof(SP_DRVINFO_DETAIL_DATA_W);
    DWORD required = 0;
    if (!SetupDiGetDriverInfoDetailW(deviceInfoSet, &deviceInfoData, &driverInfo, detail, kDriverDetailBytes,
                                     &required)) {
        const DWORD error = GetLastError();
        // A hardware ID list too long for the buffer is cut off; the INF name before it is whole.
        if (error != ERROR_INSUFFICIENT_BUFFER) {
            SETUPAPI_LOG(536, "SetupDiGetDriverInfoDetail: " << error);
            return;
        }
    }
    if (detail->InfFileName[0])
        m_driverInfFile = kel::String(detail->InfFileName);
    else
        SETUPAPI_LOG(532, "Driver detail inf file name is blank");
}

// Asks the class installer which files installing the driver would copy, without copying:
// with DI_NOVCP the files only go into our queue, which is then scanned for their targets.
void SetupApiDevice::readDriverFile(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData,
                                    SP_DRVINFO_DATA_V2_W &driverInfo)
{
    // A refused selection (no driver was found) shows as an installer failure below.
    SetupDiSetSelectedDriverW(deviceInfoSet, &deviceInfoData, &driverInfo);
    ScopedFileQueue queue;
    if (!queue.isOpen()) {
        SETUPAPI_LOG(593, "SetupOpenFileQueue failed: " << GetLastError());
        return;
    }
    SP_DEVINSTALL_PARAMS_W params = emptyInstallParams();
    if (!SetupDiGetDeviceInstallParamsW(deviceInfoSet, &deviceInfoData, &params)) {
        SETUPAPI_LOG(589, "SetupDiGetDeviceInstallParams failed: " << GetLastError());
        return;
    }
    params.FileQueue = queue.get();
    params.Flags |= DI_NOVCP;
    if (!SetupDiSetDeviceInstallParamsW(deviceInfoSet, &deviceInfoData, &params)) {
        SETUPAPI_LOG(585, "SetupDiSetDeviceInstallParams failed: " << GetLastError());
        return;
    }
    if (!SetupDiCallClassInstaller(DIF_INSTALLDEVICEFILES, deviceInfoSet, &deviceInfoData)) {
        SETUPAPI_LOG(581, "SetupDiCallClassInstaller failed: " << GetLastError());
        return;
    }
    DWORD fileCount = 0;
    DWORD result = 0;
    SetupScanFileQueueW(queue.get(), SPQ_SCAN_USE_CALLBACK, nullptr, scanQueuedFile, &fileCount, &result);
    SetupScanFileQueueW(queue.get(), SPQ_SCAN_USE_CALLBACK, nullptr, scanQueuedFile, nullptr, &result);
    m_driverName = lastQueuedFile();
}

void SetupApiDevice::parseSetupApiInfo()
{
    DeviceIdParser::Codes codes;
    const DeviceIdParser::InstanceIdKind kind = DeviceIdParser::readInstanceIdCodes(m_deviceInstanceId, codes);
    if (kind == DeviceIdParser::USB_INSTANCE_ID && m_enumeratorType != SetupApiEnumType::USB())
        SETUPAPI_LOG(
            612, "Enumerator type does not match device instance id enumerator type USB for: " << m_deviceInstanceId);
    if (kind == DeviceIdParser::PCI_INSTANCE_ID && m_enumeratorType != SetupApiEnumType::PCI())
        SETUPAPI_LOG(
            621, "Enumerator type does not match device instance id enumerator type PCI for: " << m_deviceInstanceId);
    m_vendorIdCode = codes.vendor;
    m_deviceIdCode = codes.device;
    m_subsysIdCode = codes.subsys;
    m_revIdCode = codes.rev;
    SETUPAPI_LOG(639, "Vendor ID Code: " << m_vendorIdCode);
    SETUPAPI_LOG(640, "Device ID Code: " << m_deviceIdCode);
    SETUPAPI_LOG(641, "SubSys ID Code: " << m_subsysIdCode);
    SETUPAPI_LOG(642, "Rev    ID Code: " << m_revIdCode);
}

kel::Array<kel::String> SetupApiDevice::labelledValues() const
{
    kel::Array<kel::String> values;
    values.add(labelled(L"Guid: ", m_guid));
    values.add(labelled(L"Device Instance Id: ", m_deviceInstanceId));
    values.add(labelled(L"Name: ", m_name));
    values.add(labelled(L"Manufacturer: ", m_manufacturer));
    values.add(labelled(L"Location Info: ", m_locationInfo));
    values.add(labelled(L"Driver Provider: ", m_driverProvider));
    values.add(labelled(L"Driver Name: ", m_driverName));
    values.add(labelled(L"Driver Date: ", m_driverDate));
    values.add(labelled(L"Driver Version: ", m_driverVersion));
    values.add(labelled(L"Driver INF File: ", m_driverInfFile));
    values.add(labelled(L"Vendor ID Code: ", m_vendorIdCode));
    values.add(labelled(L"Device ID Code: ", m_deviceIdCode));
    values.add(labelled(L"Sub System ID Code: ", m_subsysIdCode));
    values.add(labelled(L"Rev ID Code: ", m_revIdCode));
    return values;
}

kel::String SetupApiDevice::toString() const
{
    return joined(labelledValues(), kel::String(L", "), kel::String());
}

kel::String SetupApiDevice::toFormattedString(const kel::String &indent) const
{
    kel::Array<kel::String> lines = labelledValues();
    lines.add(labelled(L"Setup API Device Type: ", m_deviceType.name()));
    lines.add(labelled(L"Setup API Enumerator Type: ", m_enumeratorType.name()));
    return joined(lines, kel::String(L"\n"), indent);
}

} // namespace sorvane
