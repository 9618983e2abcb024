#include "DeviceIdentity.h"
#include "JsonWriter.h"

namespace sorvane {
namespace diag {

namespace {

DeviceIdentity::Capability capabilityOf(const CaptureCapability &capability)
{
    DeviceIdentity::Capability entry;
    entry.type = capability.type().name().wstr();
    entry.feature = capability.feature().name().wstr();
    for (const kel::String &standard : capability.standards().names())
        entry.standards.push_back(standard.wstr());
    return entry;
}

} // namespace

DeviceIdentity DeviceIdentity::of(const CaptureDevice &device)
{
    DeviceIdentity identity;
    identity.kind = kindOf(device);
    identity.instanceId = device.deviceInstanceId().wstr();
    identity.vendorId = device.vendorIdCode().wstr();
    identity.deviceId = device.deviceIdCode().wstr();
    identity.subsysId = device.subsysIdCode().wstr();
    identity.revisionId = device.revIdCode().wstr();
    identity.bus = busOf(device);
    identity.location = device.locationInfo().wstr();
    identity.manufacturer = device.manufacturer().wstr();
    identity.driverProvider = device.driverProvider().wstr();
    identity.driverVersion = device.driverVersion().wstr();
    identity.driverDate = device.driverDate().wstr();
    identity.driverInf = device.driverInfFile().wstr();
    identity.driverFile = device.driverName().wstr();
    identity.analogFilter = device.analogFilterName().wstr();
    identity.digitalFilter = device.digitalFilterName().wstr();
    for (const CaptureCapability &capability : device.capabilities())
        identity.capabilities.push_back(capabilityOf(capability));
    return identity;
}

// Tuners by what they tune; among the rest, imaging-class hardware or a camera control makes a
// webcam, anything else (a capture card's line inputs) is plain video capture.
bool DeviceIdentity::has(const CaptureDevice &device, const CaptureStreamType &type, const CaptureFeature &feature)
{
    for (const CaptureCapability &capability : device.capabilities()) {
        if (capability.type() == type && capability.feature() == feature)
            return true;
    }
    return false;
}

std::wstring DeviceIdentity::kindOf(const CaptureDevice &device)
{
    const bool analogTuner = has(device, CaptureStreamType::ANALOG(), CaptureFeature::TVTUNING());
    const bool digitalTuner = has(device, CaptureStreamType::DIGITAL(), CaptureFeature::TVTUNING());
    if (analogTuner && digitalTuner)
        return L"analog and digital tuner";
    if (analogTuner)
        return L"analog tuner";
    if (digitalTuner)
        return L"digital tuner";
    if (device.deviceType() == kel::String(L"IMAGE") ||
        has(device, CaptureStreamType::ANALOG(), CaptureFeature::WEBCAMCONTROL()))
        return L"webcam";
    return L"video capture";
}

std::wstring DeviceIdentity::busOf(const CaptureDevice &device)
{
    if (device.monikers().isEmpty() || device.monikers()[0].busType().isPlaceHolder())
        return std::wstring();
    return device.monikers()[0].busType().name().wstr();
}

void DeviceIdentity::write(JsonWriter &json) const
{
    json.beginObject();
    json.field(L"kind", kind);
    json.field(L"instanceId", instanceId);
    json.field(L"vendorId", vendorId);
    json.field(L"deviceId", deviceId);
    json.field(L"subsysId", subsysId);
    json.field(L"revisionId", revisionId);
    json.field(L"bus", bus);
    json.field(L"location", location);
    json.field(L"manufacturer", manufacturer);
    json.key(L"driver").beginObject();
    json.field(L"provider", driverProvider);
    json.field(L"version", driverVersion);
    json.field(L"date", driverDate);
    json.field(L"inf", driverInf);
    json.field(L"file", driverFile);
    json.endObject();
    json.field(L"analogFilter", analogFilter);
    json.field(L"digitalFilter", digitalFilter);
    json.key(L"capabilities").beginArray();
    for (const Capability &capability : capabilities) {
        json.beginObject();
        json.field(L"type", capability.type);
        json.field(L"feature", capability.feature);
        json.key(L"standards").beginArray();
        for (const std::wstring &standard : capability.standards)
            json.value(standard);
        json.endArray();
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

} // namespace diag
} // namespace sorvane
