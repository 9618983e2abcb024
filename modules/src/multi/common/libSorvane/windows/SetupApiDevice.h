// One present Plug and Play device as SetupAPI reports it: instance ID, names, location,
// the facts of its installed driver package, and the vendor/device/subsystem/revision codes
// cut out of the instance ID. Capture devices attach these records to their DirectShow
// monikers by instance ID. Enumeration never throws: a failing call is logged and leaves
// the fields it would have filled empty.
#pragma once

#include "SetupApiDevType.h"
#include "SetupApiEnumType.h"
#include "SorvaneExport.h"

#include <kel/Array.h>
#include <kel/String.h>
#include <windows.h>
#include <setupapi.h>

namespace sorvane {

class SORVANE_API SetupApiDevice {
public:
    // Appends the devices of every class in devTypes (outer loop) and every enumerator in
    // enumTypes (inner loop) to `out`, which is never cleared.
    static void enumerateDevices(kel::Array<SetupApiDevice> &out, const kel::Array<SetupApiDevType> &devTypes,
                                 const kel::Array<SetupApiEnumType> &enumTypes);
    // Only SetupApiDevType::ALL and only SetupApiEnumType::ALL: together, every present device once.
    static const kel::Array<SetupApiDevType> &allDeviceTypes();
    static const kel::Array<SetupApiEnumType> &allEnumTypes();
    // One class and one enumerator; false when SetupAPI could not list them or the
    // enumerator is NOTSET. Records found before a failure stay in `out`.
    static bool enumerateDevicesWithTypes(kel::Array<SetupApiDevice> &out, const SetupApiDevType &devType,
                                          const SetupApiEnumType &enumType);

    SetupApiDevice();

    void create(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData, const SetupApiDevType &devType,
                const SetupApiEnumType &enumType);
    bool getDeviceInstanceID(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData);
    bool getSetupApiProperty(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData, DWORD property,
                             const kel::String &keyName, kel::String &out);
    bool getDeviceDriverInfo(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData);
    void parseSetupApiInfo();

    // The instance ID again: the record keeps no class GUID text of its own.
    const kel::String &guid() const { return m_guid; }
    const kel::String &deviceInstanceId() const { return m_deviceInstanceId; }
    const kel::String &name() const { return m_name; }
    const kel::String &manufacturer() const { return m_manufacturer; }
    const kel::String &locationInfo() const { return m_locationInfo; }
    const kel::String &driverProvider() const { return m_driverProvider; }
    const kel::String &driverName() const { return m_driverName; }
    const kel::String &driverDate() const { return m_driverDate; }
    const kel::String &driverVersion() const { return m_driverVersion; }
    const kel::String &driverInfFile() const { return m_driverInfFile; }
    const kel::String &vendorIdCode() const { return m_vendorIdCode; }
    const kel::String &deviceIdCode() const { return m_deviceIdCode; }
    const kel::String &subsysIdCode() const { return m_subsysIdCode; }
    const kel::String &revIdCode() const { return m_revIdCode; }
    const SetupApiDevType &deviceType() const { return m_deviceType; }
    const SetupApiEnumType &enumeratorType() const { return m_enumeratorType; }

    kel::String toString() const;
    kel::String toFormattedString(const kel::String &indent) const;

private:
    void readDeviceClass(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData, const SetupApiDevType &devType);
    void readEnumerator(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData, const SetupApiEnumType &enumType);
    void takeDriverFacts(const SP_DRVINFO_DATA_V2_W &driverInfo);
    void readDriverInfFile(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData, SP_DRVINFO_DATA_V2_W &driverInfo);
    void readDriverFile(HDEVINFO deviceInfoSet, SP_DEVINFO_DATA &deviceInfoData, SP_DRVINFO_DATA_V2_W &driverInfo);
    kel::Array<kel::String> labelledValues() const;

    kel::String m_guid;
    kel::String m_deviceInstanceId;
    kel::String m_name;
    kel::String m_manufacturer;
    kel::String m_locationInfo;
    kel::String m_driverProvider;
    kel::String m_driverName;
    kel::String m_driverDate;
    kel::String m_driverVersion;
    kel::String m_driverInfFile;
    kel::String m_vendorIdCode;
    kel::String m_deviceIdCode;
    kel::String m_subsysIdCode;
    kel::String m_revIdCode;
    SetupApiDevType m_deviceType;
    SetupApiEnumType m_enumeratorType;
};

} // namespace sorvane
