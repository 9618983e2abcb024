#include "PlainCapture.h"

namespace sorvane {
namespace test {

ruvo::DiagDevice captureDevice(const kel::String &friendlyName, const kel::String &description,
                               const kel::String &locator)
{
    ruvo::DiagDevice device(friendlyName, description, locator, ruvo::DeviceCapability::VideoCapture());
    device.setProperty("AnalogFriendlyName", ruvo::Value(friendlyName));
    return device;
}

} // namespace test
} // namespace sorvane
