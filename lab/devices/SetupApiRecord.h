// The Plug and Play record of one piece of described hardware, as SetupAPI and the driver
// store of a real system hold it: the instance key under HKLM\System\CurrentControlSet\Enum,
// its hardware and compatible IDs, and the facts of the driver package installed for it.
//
// Devices of the description that share one instance ID (the capture filter and the BDA
// tuner filter of one PCI card have one device path) make one record; the first section to
// give a value wins. A device without a "#"-structured path or an "instance" key (a software
// filter) has none.
#pragma once

#include <windows.h>
#include <string>
#include <vector>

#include "setup/LabDescription.h"

namespace lab {

struct SetupApiRecord {
    std::wstring instanceId; // e.g. USB\VID_046D&PID_0825&MI_00\7&1A2B&0&0000, upper case
    std::wstring enumerator; // USB, PCI ...
    std::wstring className;  // "Image" or "MEDIA", as the system spells them
    GUID classGuid = GUID_NULL;
    std::wstring deviceDescription;
    std::wstring friendlyName; // empty: the key has no "FriendlyName"
    std::wstring manufacturer;
    bool withoutMfg = false; // "mfg = none": the key has no "Mfg", only the INF names the manufacturer
    std::wstring location;   // empty: no "LocationInformation"
    std::wstring service;
    std::vector<std::wstring> hardwareIds;
    std::vector<std::wstring> compatibleIds;
    // The driver package: "Provider" and "DriverVer" (MM/DD/YYYY and a.b.c.d) of its INF and
    // the one file its install section copies ("none" when it copies nothing).
    std::wstring driverProvider;
    std::wstring driverDate;
    std::wstring driverVersion;
    std::wstring driverFile;
    std::wstring sections; // where the record comes from, for messages

    // Builds the records of every described device that has hardware behind it.
    static bool fromDescription(const std::vector<DeviceDescription> &devices, std::vector<SetupApiRecord> &records,
                                std::wstring &error);
    // USB\VID_046D&PID_0825&MI_00\7&1A2B&0&0000 from \\?\usb#vid_046d&pid_0825&mi_00#7&1a2b&0&0000#{...}\global;
    // empty when the path has fewer than three "#"-separated parts.
    static std::wstring instanceIdFromPath(const std::wstring &path);

    // The driver package's identity: records sharing it share one INF.
    std::wstring packageKey() const;
    // "driver.file = none": a package whose install section copies nothing.
    bool copiesFile() const;
};

} // namespace lab
