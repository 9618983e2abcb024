// What the lab knows about one simulated device across all filter instances that serve it:
// its configuration from the property bag, the overrides a test set, and the journal of what
// was done to it. Shared by name, like a driver shares one device between its handles.
#pragma once

#include <windows.h>
#include <mutex>
#include <string>
#include <vector>

#include "common/DeviceConfig.h"

namespace lab {

class DeviceState {
public:
    explicit DeviceState(const std::wstring &name);
    DeviceState(const DeviceState &) = delete;
    DeviceState &operator=(const DeviceState &) = delete;

    const std::wstring &name() const { return m_name; }

    void setConfig(const DeviceConfig &config);

    // The effective value of a key: a test's override first, then the device's configuration.
    bool find(const std::wstring &key, std::wstring &value) const;
    std::wstring text(const std::wstring &key, const std::wstring &fallback = std::wstring()) const;
    long long integer(const std::wstring &key, long long fallback) const;
    bool flag(const std::wstring &key) const;
    // An HRESULT key; S_OK when absent or unreadable.
    HRESULT hresult(const std::wstring &key) const;
    // A comma-separated list of integers ("0, 2").
    std::vector<long long> integers(const std::wstring &key) const;
    std::vector<std::wstring> lines(const std::wstring &key) const;

    void setOverride(const std::wstring &key, const std::wstring &value);
    void removeOverride(const std::wstring &key);
    bool findOverride(const std::wstring &key, std::wstring &value) const;

    void record(const std::wstring &entry);
    // An entry with an HRESULT after it: "Run failed 0x800705AA".
    void record(const std::wstring &what, HRESULT hr);
    std::vector<std::wstring> journal() const;
    void clearJournal();

    void addDelivered(long long samples);
    long long delivered() const;

private:
    const std::wstring m_name;
    mutable std::mutex m_lock;
    DeviceConfig m_config;
    DeviceConfig m_overrides;
    std::vector<std::wstring> m_journal;
    long long m_delivered = 0;
};

} // namespace lab
