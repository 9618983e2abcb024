#include "setupapi/InstalledDriverInf.h"

#include <vector>

namespace winesupport {

namespace {

// The driver key SetupDiOpenDevRegKey hands out, closed with the object.
class OpenKey {
public:
    explicit OpenKey(HKEY key) : m_key(key) {}
    ~OpenKey()
    {
        if (m_key != INVALID_HANDLE_VALUE)
            RegCloseKey(m_key);
    }
    OpenKey(const OpenKey &) = delete;
    OpenKey &operator=(const OpenKey &) = delete;

    bool isOpen() const { return m_key != INVALID_HANDLE_VALUE; }
    HKEY get() const { return m_key; }

private:
    HKEY m_key;
};

} // namespace

std::wstring InstalledDriverInf::pathOf(HDEVINFO set, SP_DEVINFO_DATA *device)
{
    const OpenKey driverKey(SetupDiOpenDevRegKey(set, device, DICS_FLAG_GLOBAL, 0, DIREG_DRV, KEY_QUERY_VALUE));
    if (!driverKey.isOpen())
        return std::wstring();
    const std::wstring inf = infPathValue(driverKey.get());
    if (inf.empty())
        return inf;
    wchar_t windows[MAX_PATH] = {};
    const UINT length = GetWindowsDirectoryW(windows, MAX_PATH);
    if (!length || length >= MAX_PATH)
        return std::wstring();
    return std::wstring(windows) + L"\\inf\\" + inf;
}

std::wstring InstalledDriverInf::infPathValue(HKEY driverKey)
{
    DWORD type = 0;
    DWORD bytes = 0;
    if (RegQueryValueExW(driverKey, L"InfPath", nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS || type != REG_SZ)
        return std::wstring();
    std::vector<wchar_t> value(bytes / sizeof(wchar_t) + 1, L'\0');
    if (RegQueryValueExW(driverKey, L"InfPath", nullptr, nullptr, reinterpret_cast<BYTE *>(value.data()), &bytes) !=
        ERROR_SUCCESS)
        return std::wstring();
    return std::wstring(value.data());
}

} // namespace winesupport
