// One string value under HKEY_LOCAL_MACHINE as it was when the object was made, put back (or
// removed again) when it goes. For tests that move what the shared prefix's registry says; such
// tests still run alone (RUN_SERIAL), since other programs would see the change meanwhile.
#pragma once

#include <string>

namespace sorvane {
namespace test {

class SavedRegistryValue {
public:
    SavedRegistryValue(const wchar_t *key, const wchar_t *name);
    ~SavedRegistryValue();
    SavedRegistryValue(const SavedRegistryValue &) = delete;
    SavedRegistryValue &operator=(const SavedRegistryValue &) = delete;

    void set(const std::wstring &value) const;
    void remove() const;

private:
    bool read(std::wstring &value) const;

    const wchar_t *m_key;
    const wchar_t *m_name;
    std::wstring m_value;
    bool m_present;
};

} // namespace test
} // namespace sorvane
