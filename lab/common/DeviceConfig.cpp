#include "common/DeviceConfig.h"

#include <oleauto.h>
#include <ocidl.h>
#include <cwctype>
#include <cwchar>

namespace lab {

namespace {

// A VARIANT that clears itself.
class Variant {
public:
    Variant() { VariantInit(&m_value); }
    ~Variant() { VariantClear(&m_value); }
    Variant(const Variant &) = delete;
    Variant &operator=(const Variant &) = delete;
    VARIANT *get() { return &m_value; }
    const VARIANT &value() const { return m_value; }

private:
    VARIANT m_value;
};

bool readBagText(IPropertyBag *bag, const std::wstring &key, std::wstring &text)
{
    Variant value;
    if (FAILED(bag->Read(key.c_str(), value.get(), nullptr)))
        return false;
    switch (value.value().vt) {
    case VT_BSTR:
        text = value.value().bstrVal ? value.value().bstrVal : L"";
        return true;
    case VT_I4:
        text = std::to_wstring(value.value().lVal);
        return true;
    default:
        return false;
    }
}

} // namespace

DeviceConfig DeviceConfig::fromPropertyBag(IPropertyBag *bag)
{
    DeviceConfig config;
    if (!bag)
        return config;
    std::wstring text;
    for (const wchar_t *key : {L"FriendlyName", L"Description", L"DevicePath"}) {
        if (readBagText(bag, key, text))
            config.set(key, text);
    }
    if (!readBagText(bag, L"LabKeys", text))
        return config;
    for (const std::wstring &key : split(text, L'\n')) {
        std::wstring value;
        if (!key.empty() && readBagText(bag, key, value))
            config.set(key, value);
    }
    return config;
}

void DeviceConfig::set(const std::wstring &key, const std::wstring &value)
{
    m_values[lower(key)] = value;
}

bool DeviceConfig::find(const std::wstring &key, std::wstring &value) const
{
    const auto found = m_values.find(lower(key));
    if (found == m_values.end())
        return false;
    value = found->second;
    return true;
}

bool DeviceConfig::parseHresult(const std::wstring &text, HRESULT &hr)
{
    static const struct {
        const wchar_t *name;
        HRESULT value;
    } names[] = {{L"E_FAIL", E_FAIL},
                 {L"E_INVALIDARG", E_INVALIDARG},
                 {L"E_OUTOFMEMORY", E_OUTOFMEMORY},
                 {L"E_ACCESSDENIED", E_ACCESSDENIED},
                 {L"E_NOTIMPL", E_NOTIMPL},
                 {L"E_UNEXPECTED", E_UNEXPECTED}};
    const std::wstring trimmed = trim(text);
    for (const auto &entry : names) {
        if (_wcsicmp(trimmed.c_str(), entry.name) == 0) {
            hr = entry.value;
            return true;
        }
    }
    long long value = 0;
    if (!parseInteger(trimmed, value))
        return false;
    hr = static_cast<HRESULT>(static_cast<unsigned long>(value));
    return true;
}

bool DeviceConfig::parseInteger(const std::wstring &text, long long &value)
{
    const std::wstring trimmed = trim(text);
    if (trimmed.empty())
        return false;
    wchar_t *end = nullptr;
    const bool hex = trimmed.size() > 2 && trimmed[0] == L'0' && (trimmed[1] == L'x' || trimmed[1] == L'X');
    value = hex ? static_cast<long long>(std::wcstoull(trimmed.c_str() + 2, &end, 16))
                : std::wcstoll(trimmed.c_str(), &end, 10);
    return end && *end == L'\0';
}

bool DeviceConfig::parseBool(const std::wstring &text)
{
    const std::wstring value = lower(trim(text));
    return value == L"yes" || value == L"true" || value == L"1" || value == L"on";
}

std::vector<std::wstring> DeviceConfig::split(const std::wstring &text, wchar_t separator)
{
    std::vector<std::wstring> parts;
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find(separator, start);
        if (end == std::wstring::npos)
            end = text.size();
        const std::wstring part = trim(text.substr(start, end - start));
        if (!part.empty())
            parts.push_back(part);
        start = end + 1;
    }
    return parts;
}

std::wstring DeviceConfig::trim(const std::wstring &text)
{
    size_t first = 0;
    size_t last = text.size();
    while (first < last && std::iswspace(text[first]))
        ++first;
    while (last > first && std::iswspace(text[last - 1]))
        --last;
    return text.substr(first, last - first);
}

std::wstring DeviceConfig::lower(const std::wstring &text)
{
    std::wstring result(text);
    for (wchar_t &c : result)
        c = static_cast<wchar_t>(std::towlower(c));
    return result;
}

} // namespace lab
