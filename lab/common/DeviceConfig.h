// The settings of one simulated device: the values its moniker's property bag holds (written
// from the description file by the setup tool), keyed case-insensitively.
//
// A key that appears several times in a device's section of the description file (one
// "format = ..." line per capability) is stored once with its values joined by newlines; lines()
// splits them again.
#pragma once

#include <windows.h>
#include <map>
#include <string>
#include <vector>

struct IPropertyBag;

namespace lab {

class DeviceConfig {
public:
    // Reads "FriendlyName", "Description", "DevicePath" and every key listed in "LabKeys".
    static DeviceConfig fromPropertyBag(IPropertyBag *bag);

    void set(const std::wstring &key, const std::wstring &value);
    bool find(const std::wstring &key, std::wstring &value) const;
    const std::map<std::wstring, std::wstring> &values() const { return m_values; }

    // Parsing helpers shared with overrides: "0x800705AA" / "-2147024809" / "E_INVALIDARG".
    static bool parseHresult(const std::wstring &text, HRESULT &hr);
    static bool parseInteger(const std::wstring &text, long long &value);
    static bool parseBool(const std::wstring &text);
    static std::vector<std::wstring> split(const std::wstring &text, wchar_t separator);
    static std::wstring trim(const std::wstring &text);
    static std::wstring lower(const std::wstring &text);

private:
    std::map<std::wstring, std::wstring> m_values;
};

} // namespace lab
