// The INF of one driver package: the devices that share a manufacturer, provider, DriverVer
// and driver file, one model line each (matched by their most specific hardware ID), one
// install section that copies the driver file to the drivers folder (DIRID 12).
#pragma once

#include <string>
#include <vector>

#include "devices/SetupApiRecord.h"

namespace lab {

class DriverPackage {
public:
    explicit DriverPackage(std::vector<const SetupApiRecord *> records);

    // The install section the model lines name, and its decoration for NT systems.
    static const wchar_t *installSection();
    static const wchar_t *installSectionExtension();

    std::wstring infText() const;
    // Writes the INF as UTF-16 with a byte order mark, as the system's own INFs are kept.
    bool writeTo(const std::wstring &file) const;

    const std::vector<const SetupApiRecord *> &records() const { return m_records; }

private:
    std::wstring versionSection() const;
    std::wstring modelsSections() const;
    std::wstring installSections() const;
    std::wstring stringsSection() const;

    std::vector<const SetupApiRecord *> m_records;
};

} // namespace lab
