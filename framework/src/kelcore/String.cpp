#include <kel/String.h>
#include <kel/Array.h>

#include <windows.h>
#include <cwchar>
#include <cwctype>
#include <cstdio>
#include <cmath>
#include <cstdlib>

namespace kel {

namespace {

template <class T>
String hexDigits(T value, bool leadingZeros)
{
    static const wchar_t digits[] = L"0123456789ABCDEF";
    const int width = static_cast<int>(sizeof(T) * 2);
    std::wstring text(width, L'0');
    for (int i = width - 1; i >= 0; --i) {
        text[i] = digits[value & 0xF];
        value = static_cast<T>(value >> 4);
    }
    if (!leadingZeros) {
        const size_t first = text.find_first_not_of(L'0');
        text = first == std::wstring::npos ? std::wstring(L"0") : text.substr(first);
    }
    return String(text);
}

bool isSpace(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == L'\v' || c == L'\f';
}

} // namespace

String::String() {}
String::String(const Char16 *text) : m_text(text ? text : L"") {}
String::String(const Char16 *text, int length)
    : m_text(text ? std::wstring(text, length > 0 ? length : 0) : std::wstring())
{
}
String::String(const std::wstring &text) : m_text(text) {}
String::String(const char *narrow)
{
    if (!narrow)
        return;
    for (const unsigned char *p = reinterpret_cast<const unsigned char *>(narrow); *p; ++p)
        m_text += static_cast<wchar_t>(*p);
}

String String::fromUtf8(const char *utf8)
{
    if (!utf8 || !*utf8)
        return String();
    const int count = MultiByteToWideChar(CP_UTF8, 0, utf8, -1, nullptr, 0);
    if (count <= 1)
        return String();
    std::wstring text(count - 1, L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8, -1, &text[0], count);
    return String(text);
}

String String::fromUtf8(const std::string &utf8)
{
    return fromUtf8(utf8.c_str());
}
String String::fromNarrow(const char *narrow)
{
    return String(narrow);
}

String String::fromInt(int64_t value)
{
    wchar_t buffer[32];
    swprintf(buffer, 32, L"%lld", static_cast<long long>(value));
    return String(buffer);
}

String String::fromUInt(uint64_t value)
{
    wchar_t buffer[32];
    swprintf(buffer, 32, L"%llu", static_cast<unsigned long long>(value));
    return String(buffer);
}

String String::fromDouble(double value, int decimals)
{
    // Room for the largest double written out in full ("%.0f" of 1e308 has 309 digits).
    const int kRoom = 512;
    wchar_t buffer[kRoom];
    const int written = decimals >= 0 ? swprintf(buffer, kRoom, L"%.*f", decimals < 100 ? decimals : 100, value)
                                      : swprintf(buffer, kRoom, L"%g", value);
    if (written < 0)
        buffer[0] = L'\0';
    buffer[kRoom - 1] = L'\0';
    return String(buffer);
}

String String::fromBool(bool value)
{
    return String(value ? L"true" : L"false");
}

String String::hex(uint8_t value, bool leadingZeros)
{
    return hexDigits(value, leadingZeros);
}
String String::hex(uint16_t value, bool leadingZeros)
{
    return hexDigits(value, leadingZeros);
}
String String::hex(uint32_t value, bool leadingZeros)
{
    return hexDigits(value, leadingZeros);
}
String String::hex(uint64_t value, bool leadingZeros)
{
    return hexDigits(value, leadingZeros);
}

int String::length() const
{
    return static_cast<int>(m_text.size());
}
bool String::isEmpty() const
{
    return m_text.empty();
}
const Char16 *String::c_str() const
{
    return m_text.c_str();
}
const std::wstring &String::wstr() const
{
    return m_text;
}

Char16 String::charAt(int index) const
{
    if (index < 0 || index >= length()) {
        KEL_ASSERT(index >= 0 && index < length());
        return 0;
    }
    return m_text[index];
}

Char16 String::operator[](int index) const
{
    return charAt(index);
}

int String::find(const String &needle, int from) const
{
    if (from < 0 || from > length())
        return npos;
    const size_t at = m_text.find(needle.m_text, from);
    return at == std::wstring::npos ? npos : static_cast<int>(at);
}

int String::find(Char16 c, int from) const
{
    if (from < 0 || from > length())
        return npos;
    const size_t at = m_text.find(c, from);
    return at == std::wstring::npos ? npos : static_cast<int>(at);
}

int String::findLast(const String &needle) const
{
    const size_t at = m_text.rfind(needle.m_text);
    return at == std::wstring::npos ? npos : static_cast<int>(at);
}

bool String::contains(const String &needle) const
{
    return find(needle) != npos;
}
bool String::startsWith(const String &prefix) const
{
    return m_text.compare(0, prefix.m_text.size(), prefix.m_text) == 0;
}

bool String::endsWith(const String &suffix) const
{
    return m_text.size() >= suffix.m_text.size() &&
           m_text.compare(m_text.size() - suffix.m_text.size(), suffix.m_text.size(), suffix.m_text) == 0;
}

String String::substring(int start, int count) const
{
    if (start < 0)
        start = 0;
    if (start >= length())
        return String();
    return String(count < 0 ? m_text.substr(start) : m_text.substr(start, count));
}

String String::toUpper() const
{
    std::wstring text(m_text);
    for (size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<wchar_t>(towupper(text[i]));
    return String(text);
}

String String::toLower() const
{
    std::wstring text(m_text);
    for (size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<wchar_t>(towlower(text[i]));
    return String(text);
}

String String::trim() const
{
    size_t first = 0;
    size_t last = m_text.size();
    while (first < last && isSpace(m_text[first]))
        ++first;
    while (last > first && isSpace(m_text[last - 1]))
        --last;
    return String(m_text.substr(first, last - first));
}

String String::replace(const String &from, const String &to) const
{
    if (from.isEmpty())
        return *this;
    std::wstring text(m_text);
    size_t at = 0;
    while ((at = text.find(from.m_text, at)) != std::wstring::npos) {
        text.replace(at, from.m_text.size(), to.m_text);
        at += to.m_text.size();
    }
    return String(text);
}

Array<String> String::split(Char16 separator) const
{
    Array<String> parts;
    size_t start = 0;
    for (;;) {
        const size_t at = m_text.find(separator, start);
        if (at == std::wstring::npos) {
            parts.add(String(m_text.substr(start)));
            return parts;
        }
        parts.add(String(m_text.substr(start, at - start)));
        start = at + 1;
    }
}

bool String::equalsIgnoreCase(const String &other) const
{
    return toLower() == other.toLower();
}

std::string String::toUtf8() const
{
    if (m_text.empty())
        return std::string();
    const int count = WideCharToMultiByte(CP_UTF8, 0, m_text.c_str(), length(), nullptr, 0, nullptr, nullptr);
    std::string text(count, '\0');
    WideCharToMultiByte(CP_UTF8, 0, m_text.c_str(), length(), &text[0], count, nullptr, nullptr);
    return text;
}

std::string String::toNarrow() const
{
    std::string text;
    text.reserve(m_text.size());
    for (size_t i = 0; i < m_text.size(); ++i)
        text += m_text[i] < 0x100 ? static_cast<char>(m_text[i]) : '?';
    return text;
}

bool String::toInt(int64_t &out) const
{
    const String text = trim();
    if (text.isEmpty())
        return false;
    wchar_t *end = nullptr;
    const long long value = wcstoll(text.c_str(), &end, 0);
    if (*end != 0)
        return false;
    out = value;
    return true;
}

bool String::toUInt(uint64_t &out) const
{
    const String text = trim();
    if (text.isEmpty() || text[0] == L'-')
        return false;
    wchar_t *end = nullptr;
    const unsigned long long value = wcstoull(text.c_str(), &end, 0);
    if (*end != 0)
        return false;
    out = value;
    return true;
}

bool String::toDouble(double &out) const
{
    const String text = trim();
    if (text.isEmpty())
        return false;
    wchar_t *end = nullptr;
    const double value = wcstod(text.c_str(), &end);
    // "nan", "inf" and numbers too large for a double are not numbers anyone can use.
    if (*end != 0 || !std::isfinite(value))
        return false;
    out = value;
    return true;
}

String &String::append(const String &other)
{
    m_text += other.m_text;
    return *this;
}
String &String::append(Char16 c)
{
    m_text += c;
    return *this;
}
String &String::operator+=(const String &other)
{
    return append(other);
}
String &String::operator+=(const Char16 *other)
{
    m_text += other ? other : L"";
    return *this;
}
String &String::operator+=(Char16 c)
{
    return append(c);
}

bool String::operator==(const String &other) const
{
    return m_text == other.m_text;
}
bool String::operator!=(const String &other) const
{
    return m_text != other.m_text;
}
bool String::operator<(const String &other) const
{
    return m_text < other.m_text;
}

String operator+(const String &a, const String &b)
{
    String result(a);
    result += b;
    return result;
}

String operator+(const String &a, const Char16 *b)
{
    String result(a);
    result += b;
    return result;
}

String operator+(const Char16 *a, const String &b)
{
    String result(a);
    result += b;
    return result;
}

} // namespace kel
