#include "CaptureDevice.h"
#include "CaptureLog.h"

#include <kel/HashTable.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

const int kDeviceTableBuckets = 32;
const wchar_t *const kSkippedNameParts[] = {L"VIRTUAL", L"FILTER", L"SPLITTER"};
const wchar_t *const kDeeperIndent = L"    ";

kel::Array<SetupApiDevType> searchedClasses()
{
    kel::Array<SetupApiDevType> classes;
    classes.add(SetupApiDevType::MEDIA());
    classes.add(SetupApiDevType::IMAGE());
    return classes;
}

kel::Array<SetupApiEnumType> searchedEnumerators()
{
    kel::Array<SetupApiEnumType> enumerators;
    enumerators.add(SetupApiEnumType::PCI());
    enumerators.add(SetupApiEnumType::USB());
    return enumerators;
}

typedef kel::HashTable<kel::String, kel::Array<unsigned>> InstanceIdIndex;

// The table's positions by deviceInstanceId(), in insertion order. A SetupAPI record is only
// added to devices whose instance ID equals its own, which leaves their ID as it was, so the
// index made before the SetupAPI pass holds through it.
InstanceIdIndex indexByInstanceId(const CaptureDevice::DeviceTable &devicesByGuid)
{
    InstanceIdIndex index(devicesByGuid.size() * 2 + 1);
    const kel::Array<CaptureDevice> &devices = devicesByGuid.values();
    for (int i = 0; i < devices.size(); ++i) {
        const kel::String id = devices[i].deviceInstanceId();
        if (!index.contains(id))
            index.insert(id, kel::Array<unsigned>());
        index.lookup(id)->add(static_cast<unsigned>(i));
    }
    return index;
}

kel::String labelled(const wchar_t *label, const kel::String &value)
{
    return kel::String(label) + value;
}

kel::String capabilitiesText(const kel::Array<CaptureCapability> &capabilities)
{
    if (capabilities.isEmpty())
        return kel::String(L"None");
    kel::String text;
    for (int i = 0; i < capabilities.size(); ++i) {
        if (i)
            text += L", ";
        text += capabilities[i].toString();
    }
    return text;
}

template <class Record>
kel::String recordsText(const kel::Array<Record> &records, const kel::String &indent)
{
    if (records.isEmpty())
        return indent + L"None";
    kel::String text;
    for (int i = 0; i < records.size(); ++i) {
        if (i)
            text += L"\n";
        text += records[i].toFormattedString(indent);
    }
    return text;
}

} // namespace

void CaptureDevice::enumerateDevices(kel::Array<CaptureDevice> &out)
{
    SORVANE_LOG_DETAIL("Enumerating Capture Devices");
    kel::Array<DSMoniker> monikers;
    DSMoniker::enumerateMonikers(monikers, CaptureStreamType::ALL());
    kel::Array<SetupApiDevice> setupDevices;
    SetupApiDevice::enumerateDevices(setupDevices, searchedClasses(), searchedEnumerators());

    DeviceTable devicesByGuid(kDeviceTableBuckets);
    addMonikers(devicesByGuid, monikers);
    addSetupApiDevices(devicesByGuid, setupDevices);

    for (const CaptureDevice &device : devicesByGuid.values())
        out.add(device);
    SORVANE_LOG_DETAIL("Enumerated Devices:\n" << recordsText(devicesByGuid.values(), kel::String(L"  ")));
}

// Two monikers belong to one device exactly when their parsed device paths are equal.
void CaptureDevice::addMonikers(DeviceTable &devicesByGuid, const kel::Array<DSMoniker> &monikers)
{
    for (const DSMoniker &moniker : monikers) {
        // Software filters have no device path; they are no hardware to test.
        if (isSkippedMoniker(moniker) || moniker.devicePath().isEmpty())
            continue;
        SORVANE_LOG_NUMBERED(kel::LOG_DETAIL, 201,
                             "Reviewing moniker: " << moniker.toFormattedString(kel::String(L"  ")));
        CaptureDevice *device = devicesByGuid.lookup(moniker.guid());
        if (device) {
            device->addMoniker(moniker);
            SORVANE_LOG_DETAIL("Adding moniker to device: " << device->name());
            continue;
        }
        CaptureDevice created;
        created.addMoniker(moniker);
        SORVANE_LOG_DETAIL("Adding new device:\n" << created.toFormattedString(kel::String(L"  ")));
        devicesByGuid.insert(created.guid(), created);
    }
}

// SetupAPI records only complete devices a moniker made; one record may fit several. The walk
// of lookupCaptureDeviceIndexes logs every device it compares; when those lines are not
// written, an index finds the same devices without walking the table once per record.
void CaptureDevice::addSetupApiDevices(DeviceTable &devicesByGuid, const kel::Array<SetupApiDevice> &setupDevices)
{
    const bool walkLogged = kel::LogFactory::admits(sorvaneLogger(), kel::LOG_DETAIL);
    const InstanceIdIndex index = walkLogged ? InstanceIdIndex() : indexByInstanceId(devicesByGuid);
    for (const SetupApiDevice &setupDevice : setupDevices) {
        SORVANE_LOG_DETAIL("Reviewing Setup API device: " << setupDevice.toFormattedString(kel::String(L"  ")));
        const kel::Array<unsigned> *indexed = walkLogged ? nullptr : index.lookup(setupDevice.deviceInstanceId());
        const kel::Array<unsigned> indexes =
            walkLogged ? lookupCaptureDeviceIndexes(devicesByGuid, setupDevice.deviceInstanceId())
                       : (indexed ? *indexed : kel::Array<unsigned>());
        for (unsigned position : indexes) {
            devicesByGuid.valueAt(static_cast<int>(position)).addSetupApiDevice(setupDevice);
            SORVANE_LOG_DETAIL("Adding setupApiDevice to device:\n"
                               << setupDevice.toFormattedString(kel::String(L"  ")));
        }
        if (indexes.isEmpty())
            SORVANE_LOG_DETAIL("Setup API device ignored: " << setupDevice.toString());
    }
}

bool CaptureDevice::isSkippedMoniker(const DSMoniker &moniker)
{
    const kel::String name = moniker.filterName().toUpper();
    for (const wchar_t *part : kSkippedNameParts) {
        if (name.contains(kel::String(part)))
            return true;
    }
    return false;
}

kel::Array<unsigned> CaptureDevice::lookupCaptureDeviceIndexes(const DeviceTable &devicesByGuid,
                                                               const kel::String &deviceInstanceId)
{
    SORVANE_LOG_DETAIL("lookupCaptureDevice " << deviceInstanceId);
    kel::Array<unsigned> indexes;
    const kel::Array<CaptureDevice> &devices = devicesByGuid.values();
    for (int i = 0; i < devices.size(); ++i) {
        const kel::String id = devices[i].deviceInstanceId();
        SORVANE_LOG_DETAIL("deviceInstanceId = " << id);
        if (id != deviceInstanceId)
            continue;
        SORVANE_LOG_DETAIL("deviceInstanceId match");
        indexes.add(static_cast<unsigned>(i));
    }
    return indexes;
}

CaptureDevice::CaptureDevice() {}

void CaptureDevice::addMoniker(const DSMoniker &moniker)
{
    m_monikers.add(moniker);
}

void CaptureDevice::addSetupApiDevice(const SetupApiDevice &device)
{
    m_setupApiDevices.add(device);
}

kel::String CaptureDevice::fromSetupApi(SetupApiField field) const
{
    for (const SetupApiDevice &device : m_setupApiDevices) {
        const kel::String &value = (device.*field)();
        if (!value.isEmpty())
            return value;
    }
    return kel::String();
}

kel::String CaptureDevice::fromMonikers(MonikerField field) const
{
    for (const DSMoniker &moniker : m_monikers) {
        const kel::String &value = (moniker.*field)();
        if (!value.isEmpty())
            return value;
    }
    return kel::String();
}

kel::String CaptureDevice::setupApiThenMonikers(SetupApiField setupField, MonikerField monikerField) const
{
    const kel::String value = fromSetupApi(setupField);
    return value.isEmpty() ? fromMonikers(monikerField) : value;
}

kel::String CaptureDevice::fromStreamType(MonikerField field, const CaptureStreamType &streamType) const
{
    for (const DSMoniker &moniker : m_monikers) {
        const kel::String &value = (moniker.*field)();
        if (!value.isEmpty() && moniker.captureStreamType() == streamType)
            return value;
    }
    return kel::String();
}

kel::String CaptureDevice::guid() const
{
    return m_monikers.isEmpty() ? kel::String() : m_monikers[0].guid();
}

kel::String CaptureDevice::name() const
{
    const kel::String value = fromMonikers(&DSMoniker::filterName);
    return value.isEmpty() ? fromSetupApi(&SetupApiDevice::name) : value;
}

kel::String CaptureDevice::deviceInstanceId() const
{
    return setupApiThenMonikers(&SetupApiDevice::deviceInstanceId, &DSMoniker::deviceInstanceId);
}

kel::String CaptureDevice::vendorIdCode() const
{
    return setupApiThenMonikers(&SetupApiDevice::vendorIdCode, &DSMoniker::vendorIdCode);
}

kel::String CaptureDevice::deviceIdCode() const
{
    return setupApiThenMonikers(&SetupApiDevice::deviceIdCode, &DSMoniker::deviceIdCode);
}

kel::String CaptureDevice::subsysIdCode() const
{
    return setupApiThenMonikers(&SetupApiDevice::subsysIdCode, &DSMoniker::subsysIdCode);
}

kel::String CaptureDevice::revIdCode() const
{
    return setupApiThenMonikers(&SetupApiDevice::revIdCode, &DSMoniker::revIdCode);
}

kel::String CaptureDevice::manufacturer() const
{
    return fromSetupApi(&SetupApiDevice::manufacturer);
}
kel::String CaptureDevice::locationInfo() const
{
    return fromSetupApi(&SetupApiDevice::locationInfo);
}
kel::String CaptureDevice::driverProvider() const
{
    return fromSetupApi(&SetupApiDevice::driverProvider);
}
kel::String CaptureDevice::driverName() const
{
    return fromSetupApi(&SetupApiDevice::driverName);
}
kel::String CaptureDevice::driverDate() const
{
    return fromSetupApi(&SetupApiDevice::driverDate);
}
kel::String CaptureDevice::driverVersion() const
{
    return fromSetupApi(&SetupApiDevice::driverVersion);
}
kel::String CaptureDevice::driverInfFile() const
{
    return fromSetupApi(&SetupApiDevice::driverInfFile);
}

kel::String CaptureDevice::deviceType() const
{
    for (const SetupApiDevice &device : m_setupApiDevices) {
        if (!device.deviceType().isPlaceHolder())
            return device.deviceType().name();
    }
    return kel::String();
}

kel::String CaptureDevice::analogFilterName() const
{
    return fromStreamType(&DSMoniker::filterName, CaptureStreamType::ANALOG());
}

kel::String CaptureDevice::analogFilterClassId() const
{
    return fromStreamType(&DSMoniker::clsid, CaptureStreamType::ANALOG());
}

kel::String CaptureDevice::analogFilterDriverName() const
{
    return fromStreamType(&DSMoniker::filterDriverName, CaptureStreamType::ANALOG());
}

kel::String CaptureDevice::digitalFilterName() const
{
    return fromStreamType(&DSMoniker::filterName, CaptureStreamType::DIGITAL());
}

kel::String CaptureDevice::digitalFilterClassId() const
{
    return fromStreamType(&DSMoniker::clsid, CaptureStreamType::DIGITAL());
}

kel::String CaptureDevice::digitalFilterDriverName() const
{
    return fromStreamType(&DSMoniker::filterDriverName, CaptureStreamType::DIGITAL());
}

kel::Array<CaptureCapability> CaptureDevice::capabilities() const
{
    kel::Array<CaptureCapability> all;
    for (const DSMoniker &moniker : m_monikers) {
        for (const CaptureCapability &capability : moniker.capabilities())
            all.add(capability);
    }
    return all;
}

kel::Array<kel::String> CaptureDevice::labelledValues() const
{
    kel::Array<kel::String> values;
    values.add(labelled(L"Guid: ", guid()));
    values.add(labelled(L"Name: ", name()));
    values.add(labelled(L"Device Instance Id: ", deviceInstanceId()));
    values.add(labelled(L"Vendor ID Code: ", vendorIdCode()));
    values.add(labelled(L"Device ID Code: ", deviceIdCode()));
    values.add(labelled(L"Sub System ID Code: ", subsysIdCode()));
    values.add(labelled(L"Rev ID Code: ", revIdCode()));
    values.add(labelled(L"Manufacturer: ", manufacturer()));
    values.add(labelled(L"Location Info: ", locationInfo()));
    values.add(labelled(L"Driver Provider: ", driverProvider()));
    values.add(labelled(L"Driver Name: ", driverName()));
    values.add(labelled(L"Driver Date: ", driverDate()));
    values.add(labelled(L"Driver Version: ", driverVersion()));
    values.add(labelled(L"Driver INF File: ", driverInfFile()));
    values.add(labelled(L"Device Type: ", deviceType()));
    values.add(labelled(L"Analog Filter Name: ", analogFilterName()));
    values.add(labelled(L"Analog Filter Class ID: ", analogFilterClassId()));
    values.add(labelled(L"Analog Filter Driver Name: ", analogFilterDriverName()));
    values.add(labelled(L"Digital Filter Name: ", digitalFilterName()));
    values.add(labelled(L"Digital Filter Class ID: ", digitalFilterClassId()));
    values.add(labelled(L"Digital Filter Driver Name: ", digitalFilterDriverName()));
    values.add(labelled(L"Capabilities: ", capabilitiesText(capabilities())));
    return values;
}

kel::String CaptureDevice::toString() const
{
    kel::String text;
    const kel::Array<kel::String> values = labelledValues();
    for (int i = 0; i < values.size(); ++i) {
        if (i)
            text += L", ";
        text += values[i];
    }
    const kel::String deeper(kDeeperIndent);
    text += L", Monikers:\n" + recordsText(m_monikers, deeper);
    text += L"\nSetup API Devices:\n" + recordsText(m_setupApiDevices, deeper);
    return text;
}

kel::String CaptureDevice::toFormattedString(const kel::String &indent) const
{
    kel::String text;
    for (const kel::String &value : labelledValues())
        text += indent + value + L"\n";
    const kel::String deeper = indent + kDeeperIndent;
    text += indent + L"Monikers:\n" + recordsText(m_monikers, deeper) + L"\n";
    text += indent + L"Setup API Devices:\n" + recordsText(m_setupApiDevices, deeper);
    return text;
}

} // namespace sorvane
