#include "DeviceRecords.h"
#include "DeviceIdentity.h"

namespace sorvane {
namespace diag {

ruvo::DiagDevice DeviceRecords::recordFor(const CaptureDevice &device)
{
    const kel::String description = device.monikers().isEmpty() ? kel::String() : device.monikers()[0].description();
    ruvo::DiagDevice record(device.name(), description, device.guid(), capabilitiesOf(device));
    if (!device.analogFilterName().isEmpty())
        record.setProperty("AnalogFriendlyName", ruvo::Value(device.analogFilterName()));
    if (!device.digitalFilterName().isEmpty())
        record.setProperty("DigitalFriendlyName", ruvo::Value(device.digitalFilterName()));
    if (!device.monikers().isEmpty())
        record.setProperty("DevicePath", ruvo::Value(device.monikers()[0].devicePath()));
    return record;
}

ruvo::DeviceCapability DeviceRecords::capabilitiesOf(const CaptureDevice &device)
{
    ruvo::DeviceCapability capabilities;
    if (DeviceIdentity::has(device, CaptureStreamType::ANALOG(), CaptureFeature::CAPTURE()))
        capabilities = capabilities | ruvo::DeviceCapability::VideoCapture();
    if (DeviceIdentity::has(device, CaptureStreamType::ANALOG(), CaptureFeature::TVTUNING()))
        capabilities = capabilities | ruvo::DeviceCapability::AnalogTVTuner() | ruvo::DeviceCapability::FMRadioTuner();
    // A digital tuner is a video capture device to the framework too: every capture class
    // requires that capability of its record.
    if (DeviceIdentity::has(device, CaptureStreamType::DIGITAL(), CaptureFeature::TVTUNING()))
        capabilities = capabilities | ruvo::DeviceCapability::VideoCapture() | ruvo::DeviceCapability::DigitalTVTuner();
    if (DeviceIdentity::kindOf(device) == L"webcam")
        capabilities = capabilities | ruvo::DeviceCapability::Webcam();
    return capabilities;
}

} // namespace diag
} // namespace sorvane
