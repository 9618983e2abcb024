#include "setup/LabDescription.h"

#include <windows.h>
#include <fstream>
#include <sstream>

#include "common/DeviceConfig.h"

namespace lab {

namespace {

std::wstring fromUtf8(const std::string &text)
{
    if (text.empty())
        return std::wstring();
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring result(static_cast<size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), &result[0], length);
    return result;
}

// A '#' starts a comment only at the start of a line or after a blank, so values may hold '#'
// (device paths do).
std::wstring stripComment(const std::wstring &line)
{
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == L'#' && (i == 0 || line[i - 1] == L' ' || line[i - 1] == L'\t'))
            return line.substr(0, i);
    }
    return line;
}

} // namespace

std::wstring DeviceDescription::value(const std::wstring &key) const
{
    std::wstring result;
    for (const auto &entry : values) {
        if (_wcsicmp(entry.first.c_str(), key.c_str()) != 0)
            continue;
        if (!result.empty())
            result += L'\n';
        result += entry.second;
    }
    return result;
}

std::vector<std::wstring> DeviceDescription::keys() const
{
    std::vector<std::wstring> result;
    for (const auto &entry : values) {
        bool seen = false;
        for (const std::wstring &key : result)
            seen = seen || _wcsicmp(key.c_str(), entry.first.c_str()) == 0;
        if (!seen)
            result.push_back(entry.first);
    }
    return result;
}

bool LabDescription::parse(const std::string &text, std::wstring &error)
{
    m_devices.clear();
    std::istringstream in(text);
    std::string raw;
    int number = 0;
    while (std::getline(in, raw)) {
        ++number;
        const std::wstring line = DeviceConfig::trim(stripComment(fromUtf8(raw)));
        if (line.empty())
            continue;
        if (line.front() == L'[') {
            if (line.back() != L']' || line.size() < 3) {
                error = L"line " + std::to_wstring(number) + L": a section is written [kind]";
                return false;
            }
            DeviceDescription device;
            device.kind = DeviceConfig::trim(line.substr(1, line.size() - 2));
            device.line = number;
            m_devices.push_back(device);
            continue;
        }
        const size_t equals = line.find(L'=');
        if (equals == std::wstring::npos || m_devices.empty()) {
            error = L"line " + std::to_wstring(number) + L": expected key = value inside a [kind] section";
            return false;
        }
        m_devices.back().values.emplace_back(DeviceConfig::trim(line.substr(0, equals)),
                                             DeviceConfig::trim(line.substr(equals + 1)));
    }
    return true;
}

bool LabDescription::load(const std::wstring &path, std::wstring &error)
{
    std::ifstream file(path.c_str(), std::ios::binary);
    if (!file) {
        error = L"cannot open " + path;
        return false;
    }
    std::ostringstream content;
    content << file.rdbuf();
    return parse(content.str(), error);
}

} // namespace lab
