// One physical capture device: the DirectShow monikers that belong to it (a card's analog
// capture filter and its BDA tuner filter are two monikers of one device) and the SetupAPI
// records of the same hardware. Identity and driver facts prefer the SetupAPI records, names
// prefer the monikers; each accessor takes the first non-empty value by that rule.
#pragma once

#include "CaptureCapability.h"
#include "DSMoniker.h"
#include "SetupApiDevice.h"
#include "SorvaneExport.h"

#include <kel/Array.h>
#include <kel/OrderedHashTable.h>
#include <kel/String.h>

namespace sorvane {

class SORVANE_API CaptureDevice {
public:
    // Devices by guid() in the order they were found.
    typedef kel::OrderedHashTable<kel::String, CaptureDevice> DeviceTable;

    // Fills `out` with every capture device found. Never throws.
    static void enumerateDevices(kel::Array<CaptureDevice> &out);
    // Positions, in devicesByGuid, of the devices whose deviceInstanceId() is deviceInstanceId.
    static kel::Array<unsigned> lookupCaptureDeviceIndexes(const DeviceTable &devicesByGuid,
                                                           const kel::String &deviceInstanceId);

    CaptureDevice();

    const kel::Array<DSMoniker> &monikers() const { return m_monikers; }
    const kel::Array<SetupApiDevice> &setupApiDevices() const { return m_setupApiDevices; }
    void addMoniker(const DSMoniker &moniker);
    void addSetupApiDevice(const SetupApiDevice &device);

    kel::String guid() const;
    kel::String name() const;
    kel::String deviceInstanceId() const;
    kel::String vendorIdCode() const;
    kel::String deviceIdCode() const;
    kel::String subsysIdCode() const;
    kel::String revIdCode() const;
    kel::String manufacturer() const;
    kel::String locationInfo() const;
    kel::String driverProvider() const;
    kel::String driverName() const;
    kel::String driverDate() const;
    kel::String driverVersion() const;
    kel::String driverInfFile() const;
    kel::String deviceType() const;
    kel::String analogFilterName() const;
    kel::String analogFilterClassId() const;
    kel::String analogFilterDriverName() const;
    kel::String digitalFilterName() const;
    kel::String digitalFilterClassId() const;
    kel::String digitalFilterDriverName() const;
    kel::Array<CaptureCapability> capabilities() const;

    kel::String toString() const;
    kel::String toFormattedString(const kel::String &indent) const;

private:
    typedef const kel::String &(SetupApiDevice::*SetupApiField)() const;
    typedef const kel::String &(DSMoniker::*MonikerField)() const;

    static void addMonikers(DeviceTable &devicesByGuid, const kel::Array<DSMoniker> &monikers);
    static void addSetupApiDevices(DeviceTable &devicesByGuid, const kel::Array<SetupApiDevice> &setupDevices);
    static bool isSkippedMoniker(const DSMoniker &moniker);

    kel::String fromSetupApi(SetupApiField field) const;
    kel::String fromMonikers(MonikerField field) const;
    kel::String setupApiThenMonikers(SetupApiField setupField, MonikerField monikerField) const;
    kel::String fromStreamType(MonikerField field, const CaptureStreamType &streamType) const;
    kel::Array<kel::String> labelledValues() const;

    kel::Array<DSMoniker> m_monikers;
    kel::Array<SetupApiDevice> m_setupApiDevices;
};

} // namespace sorvane
