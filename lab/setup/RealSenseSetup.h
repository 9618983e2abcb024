// Places the stand-in RealSense runtime where the library looks for it: the SDK's dispatch keys
// from the description's [realsense-runtime] section, and the description's own path, from
// which the runtime reads its implementations and cameras.
#pragma once

#include "setup/LabDescription.h"

#include <windows.h>
#include <string>

namespace lab {

class RealSenseSetup {
public:
    // binFolder ends with a backslash; descriptionPath is the description file's full path.
    RealSenseSetup(const std::wstring &binFolder, const std::wstring &descriptionPath);

    // True for the sections this setup handles rather than the device setup.
    static bool handles(const DeviceDescription &section);
    // Writes the keys the description asks for and removes those it leaves out.
    HRESULT write(const LabDescription &description, std::wstring &error) const;

private:
    // A folder or file named relative to the bin folder, or "." as it stands.
    std::wstring resolve(const std::wstring &location) const;
    static LSTATUS writeValue(const wchar_t *key, const wchar_t *name, const std::wstring &value);

    std::wstring m_binFolder;
    std::wstring m_descriptionPath;
};

} // namespace lab
