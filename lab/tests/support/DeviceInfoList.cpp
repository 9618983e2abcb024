#include "DeviceInfoList.h"

namespace labtest {

const GUID kImageClass = {0x6bdd1fc6, 0x810f, 0x11d0, {0xbe, 0xc7, 0x08, 0x00, 0x2b, 0xe2, 0x09, 0x2f}};
const GUID kMediaClass = {0x4d36e96c, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};

DeviceInfoList::DeviceInfoList(const GUID &setupClass, const wchar_t *enumerator)
    : m_set(SetupDiGetClassDevsW(&setupClass, enumerator, nullptr, DIGCF_PRESENT))
{
}

DeviceInfoList::~DeviceInfoList()
{
    if (m_set != INVALID_HANDLE_VALUE)
        SetupDiDestroyDeviceInfoList(m_set);
}

std::vector<std::wstring> DeviceInfoList::instanceIds() const
{
    std::vector<std::wstring> ids;
    SP_DEVINFO_DATA device = {};
    device.cbSize = sizeof(device);
    for (DWORD index = 0; m_set != INVALID_HANDLE_VALUE && SetupDiEnumDeviceInfo(m_set, index, &device); ++index) {
        wchar_t id[512] = {};
        if (SetupDiGetDeviceInstanceIdW(m_set, &device, id, 512, nullptr))
            ids.push_back(id);
    }
    return ids;
}

bool DeviceInfoList::find(const std::wstring &instanceId, SP_DEVINFO_DATA &device) const
{
    device = SP_DEVINFO_DATA{};
    device.cbSize = sizeof(device);
    for (DWORD index = 0; m_set != INVALID_HANDLE_VALUE && SetupDiEnumDeviceInfo(m_set, index, &device); ++index) {
        wchar_t id[512] = {};
        if (SetupDiGetDeviceInstanceIdW(m_set, &device, id, 512, nullptr) && _wcsicmp(id, instanceId.c_str()) == 0)
            return true;
    }
    return false;
}

bool DeviceInfoList::property(SP_DEVINFO_DATA &device, DWORD property, std::wstring &text) const
{
    wchar_t buffer[1024] = {};
    if (!SetupDiGetDeviceRegistryPropertyW(m_set, &device, property, nullptr, reinterpret_cast<BYTE *>(buffer),
                                           sizeof(buffer) - sizeof(wchar_t), nullptr))
        return false;
    text = buffer;
    return true;
}

} // namespace labtest
