#include "common/DeviceState.h"

#include <cwchar>

namespace lab {

DeviceState::DeviceState(const std::wstring &name) : m_name(name) {}

void DeviceState::setConfig(const DeviceConfig &config)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_config = config;
}

bool DeviceState::find(const std::wstring &key, std::wstring &value) const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_overrides.find(key, value) || m_config.find(key, value);
}

std::wstring DeviceState::text(const std::wstring &key, const std::wstring &fallback) const
{
    std::wstring value;
    return find(key, value) ? value : fallback;
}

long long DeviceState::integer(const std::wstring &key, long long fallback) const
{
    long long value = 0;
    return DeviceConfig::parseInteger(text(key), value) ? value : fallback;
}

bool DeviceState::flag(const std::wstring &key) const
{
    return DeviceConfig::parseBool(text(key));
}

HRESULT DeviceState::hresult(const std::wstring &key) const
{
    HRESULT hr = S_OK;
    return DeviceConfig::parseHresult(text(key), hr) ? hr : S_OK;
}

std::vector<long long> DeviceState::integers(const std::wstring &key) const
{
    std::vector<long long> values;
    for (const std::wstring &part : DeviceConfig::split(text(key), L',')) {
        long long value = 0;
        if (DeviceConfig::parseInteger(part, value))
            values.push_back(value);
    }
    return values;
}

std::vector<std::wstring> DeviceState::lines(const std::wstring &key) const
{
    return DeviceConfig::split(text(key), L'\n');
}

void DeviceState::setOverride(const std::wstring &key, const std::wstring &value)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_overrides.set(key, value);
}

void DeviceState::removeOverride(const std::wstring &key)
{
    std::lock_guard<std::mutex> guard(m_lock);
    DeviceConfig remaining;
    for (const auto &entry : m_overrides.values()) {
        if (entry.first != DeviceConfig::lower(key))
            remaining.set(entry.first, entry.second);
    }
    m_overrides = remaining;
}

bool DeviceState::findOverride(const std::wstring &key, std::wstring &value) const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_overrides.find(key, value);
}

void DeviceState::record(const std::wstring &entry)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_journal.push_back(entry);
}

void DeviceState::record(const std::wstring &what, HRESULT hr)
{
    wchar_t code[16] = {};
    swprintf(code, 16, L" 0x%08lX", static_cast<unsigned long>(hr));
    record(what + code);
}

std::vector<std::wstring> DeviceState::journal() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_journal;
}

void DeviceState::clearJournal()
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_journal.clear();
    m_delivered = 0;
}

void DeviceState::addDelivered(long long samples)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_delivered += samples;
}

long long DeviceState::delivered() const
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_delivered;
}

} // namespace lab
