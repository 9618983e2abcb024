// UTF-16 text by value. Char16 is wchar_t so a String hands its buffer straight to Win32.
#pragma once

#include <kel/Export.h>
#include <cstdint>
#include <string>

namespace kel {

typedef wchar_t Char16;

template <class T>
class Array;

class KEL_API String {
public:
    enum { npos = -1 };

    String();
    String(const Char16 *text);
    String(const Char16 *text, int length);
    explicit String(const std::wstring &text);
    // Narrow text is taken as Latin-1 (ASCII-compatible), one unit per byte.
    explicit String(const char *narrow);

    static String fromUtf8(const char *utf8);
    static String fromUtf8(const std::string &utf8);
    static String fromNarrow(const char *narrow);
    static String fromInt(int64_t value);
    static String fromUInt(uint64_t value);
    static String fromDouble(double value, int decimals = -1);
    static String fromBool(bool value);
    // Upper-case hexadecimal digits without "0x"; with leadingZeros the width is
    // two digits per byte of the argument's type.
    static String hex(uint8_t value, bool leadingZeros);
    static String hex(uint16_t value, bool leadingZeros);
    static String hex(uint32_t value, bool leadingZeros);
    static String hex(uint64_t value, bool leadingZeros);

    int length() const;
    bool isEmpty() const;
    const Char16 *c_str() const;
    const std::wstring &wstr() const;
    Char16 charAt(int index) const;
    Char16 operator[](int index) const;

    int find(const String &needle, int from = 0) const;
    int find(Char16 c, int from = 0) const;
    int findLast(const String &needle) const;
    bool contains(const String &needle) const;
    bool startsWith(const String &prefix) const;
    bool endsWith(const String &suffix) const;

    String substring(int start, int count = npos) const;
    String toUpper() const;
    String toLower() const;
    String trim() const;
    String replace(const String &from, const String &to) const;
    Array<String> split(Char16 separator) const;
    bool equalsIgnoreCase(const String &other) const;

    std::string toUtf8() const;
    std::string toNarrow() const;
    // The whole text (blanks around it aside) as a number, C's way: "0x1F" and "017" are
    // hexadecimal and octal; false when it is not one.
    bool toInt(int64_t &out) const;
    bool toUInt(uint64_t &out) const;
    // A finite number only: "nan", "inf" and values beyond a double's range are refused.
    bool toDouble(double &out) const;

    String &append(const String &other);
    String &append(Char16 c);
    String &operator+=(const String &other);
    String &operator+=(const Char16 *other);
    String &operator+=(Char16 c);

    bool operator==(const String &other) const;
    bool operator!=(const String &other) const;
    bool operator<(const String &other) const;

private:
    std::wstring m_text;
};

KEL_API String operator+(const String &a, const String &b);
KEL_API String operator+(const String &a, const Char16 *b);
KEL_API String operator+(const Char16 *a, const String &b);

struct StringHash {
    size_t operator()(const String &s) const { return std::hash<std::wstring>()(s.wstr()); }
};

} // namespace kel
