// The locator the framework keeps for a device, read from its device path by the library's
// own rule (the identity a capture device gets from its moniker).
#pragma once

#include <DeviceIdParser.h>
#include <kel/String.h>

namespace sorvane {
namespace test {

inline kel::String locatorOf(const kel::String &devicePath)
{
    DeviceIdParser::PathIdentity identity;
    DeviceIdParser::readDevicePath(devicePath.toUpper(), identity);
    return identity.guid;
}

} // namespace test
} // namespace sorvane
