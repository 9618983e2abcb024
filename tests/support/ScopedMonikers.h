// Device monikers of a test's own, published in a device category the way a driver publishes
// them (HKLM\Software\Classes\CLSID\{category}\Instance\<name>) and removed when the scope ends.
// In a category of the test's own nobody else sees them; in a system category (video input,
// BDA tuners) every program of the Wine prefix does, so such tests run alone.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace sorvane {
namespace test {

class ScopedMonikers {
public:
    static constexpr const wchar_t *kNoClass = L"-";

    struct Moniker {
        std::wstring name;        // the instance key's name and "FriendlyName"
        std::wstring devicePath;  // "DevicePath"; none when empty
        std::wstring clsid;       // "CLSID"; a class nobody registered when empty, none when kNoClass
        std::wstring description; // "Description"; none when empty
    };

    explicit ScopedMonikers(const GUID &category);
    ~ScopedMonikers();
    ScopedMonikers(const ScopedMonikers &) = delete;
    ScopedMonikers &operator=(const ScopedMonikers &) = delete;

    // False when the registry refused the key.
    bool add(const Moniker &moniker);

private:
    std::wstring instanceKey(const std::wstring &name) const;

    std::wstring m_category;
    std::vector<std::wstring> m_added;
};

} // namespace test
} // namespace sorvane
