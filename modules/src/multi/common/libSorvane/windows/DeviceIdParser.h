// Reading identities out of Plug and Play texts: the vendor/device/subsystem/revision codes of
// a device instance ID ("PCI\VEN_14F1&DEV_8800&SUBSYS_D6180070&REV_05\4&2A") and the
// instance ID hidden in a DirectShow device path ("\\?\usb#vid_046d&pid_0825#7&1a2b#{...}").
// Plain text work with no system calls, so it can be exercised on its own.
#pragma once

#include "CaptureBusType.h"
#include "SorvaneExport.h"
#include <kel/String.h>

namespace sorvane {

class SORVANE_API DeviceIdParser {
public:
    // The ID codes as they stand in the text (hex digits, upper case); empty when absent.
    struct Codes {
        kel::String vendor;
        kel::String device;
        kel::String subsys;
        kel::String rev;
    };

    // What a device path tells about its device. Fields a path does not give keep their value.
    struct PathIdentity {
        // The whole path rebuilt with "\" between its parts; empty when it could not be read.
        kel::String guid;
        // The first three parts: enumerator, hardware and instance.
        kel::String deviceInstanceId;
        CaptureBusType busType;
        Codes codes;
    };

    // Which enumerator prefix an instance ID was recognised by.
    enum InstanceIdKind { USB_INSTANCE_ID, PCI_INSTANCE_ID, OTHER_INSTANCE_ID };

    // ASCII letters and digits only.
    static bool isAlphaNum(kel::Char16 c);
    // The letters and digits right after the first `marker` in `text`; false, and `code`
    // untouched, when the marker is absent.
    static bool codeAfter(const kel::String &marker, const kel::String &text, kel::String &code);

    // Fills `codes` from a SetupAPI device instance ID (any case) and tells which enumerator
    // rule read it: "USB\" IDs use VID_/PID_, others VID_ or VEN_ and PID_ or DEV_.
    static InstanceIdKind readInstanceIdCodes(const kel::String &instanceId, Codes &codes);

    // Reads one upper-cased candidate text (a moniker display name or device path) into
    // `identity`. A text with fewer than three "#"-separated parts is not a device path and
    // changes nothing. Returns true when the guid and instance ID were set.
    static bool readDevicePath(const kel::String &candidate, PathIdentity &identity);

    // The identifier a capture finds its framework record's locator by: everything after
    // "\\?\" in a moniker's device path, upper-cased, with "#" as "\"; empty when the path has
    // no "\\?\" or nothing after it.
    static kel::String pathIdentifier(const kel::String &devicePath);

    // The part of a device path or locator that names the device instance on its bus
    // ("PCI\VEN_..&DEV_..\<instance>"), upper-cased and with "#" read as "\": the tuner and
    // receiver filters of one card share it. A text naming no USB or PCI instance is kept whole.
    static kel::String instanceKey(const kel::String &pathOrLocator);

private:
    static kel::String withBackslashes(const kel::String &text);
    static void readPathCodes(const kel::String &candidate, Codes &codes);
    static const CaptureBusType *busOfEnumerator(const kel::String &enumerator);
};

} // namespace sorvane
