// A SetupAPI device information set as Windows code opens it (by setup class and enumerator),
// destroyed with the object, with the lookups the lab tests make on its devices.
#pragma once

#include <windows.h>
#include <setupapi.h>

#include <string>
#include <vector>

namespace labtest {

// GUID_DEVCLASS_IMAGE and GUID_DEVCLASS_MEDIA.
extern const GUID kImageClass;
extern const GUID kMediaClass;

class DeviceInfoList {
public:
    DeviceInfoList(const GUID &setupClass, const wchar_t *enumerator);
    ~DeviceInfoList();
    DeviceInfoList(const DeviceInfoList &) = delete;
    DeviceInfoList &operator=(const DeviceInfoList &) = delete;

    HDEVINFO handle() const { return m_set; }
    std::vector<std::wstring> instanceIds() const;
    // The device of that instance ID; false when the set lacks it.
    bool find(const std::wstring &instanceId, SP_DEVINFO_DATA &device) const;
    // A text property (first string of a multi-string); false when SetupAPI has none.
    bool property(SP_DEVINFO_DATA &device, DWORD property, std::wstring &text) const;

private:
    HDEVINFO m_set;
};

} // namespace labtest
