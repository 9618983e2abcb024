#include <ruvo/Value.h>

namespace ruvo {

namespace {

// Parameters are written in decimal: "010" is ten, and "0x3" is no number.
bool parseWhole(const kel::String &text, uint64_t &out)
{
    const kel::String trimmed = text.trim();
    if (trimmed.isEmpty() || trimmed.length() > 20)
        return false;
    uint64_t value = 0;
    for (int i = 0; i < trimmed.length(); ++i) {
        const wchar_t c = trimmed[i];
        if (c < L'0' || c > L'9')
            return false;
        const uint64_t digit = static_cast<uint64_t>(c - L'0');
        if (value > (UINT64_MAX - digit) / 10)
            return false;
        value = value * 10 + digit;
    }
    out = value;
    return true;
}

// A finite decimal number ("88.1", "-2", "1e2"); not "nan", "inf" or "0x1p3".
bool parseNumber(const kel::String &text, double &out)
{
    const kel::String trimmed = text.trim();
    for (int i = 0; i < trimmed.length(); ++i) {
        const wchar_t c = trimmed[i];
        if (!((c >= L'0' && c <= L'9') || c == L'.' || c == L'-' || c == L'+' || c == L'e' || c == L'E'))
            return false;
    }
    return trimmed.toDouble(out);
}

// A double as a whole number of the UINT32 range: the nearest end for values outside it
// (NaN counts as 0), where a plain conversion would be undefined.
uint32_t clampToUint32(double value)
{
    if (!(value > 0.0))
        return 0;
    if (value >= 4294967295.0)
        return 0xFFFFFFFFu;
    return static_cast<uint32_t>(value);
}

} // namespace

Value::Value() : m_type(DataType::NONE), m_uint(0), m_bool(false), m_double(0.0) {}
Value::Value(uint32_t value) : m_type(DataType::UINT32), m_uint(value), m_bool(false), m_double(0.0) {}
Value::Value(const RuvoString &value) : Value(value.toKELString()) {}
Value::Value(const kel::String &value)
    : m_type(DataType::STRING), m_uint(0), m_bool(false), m_double(0.0), m_text(value)
{
}
Value::Value(const char *value) : Value(kel::String(value)) {}

Value Value::fromBool(bool value)
{
    Value result;
    result.m_type = DataType::BOOLEAN;
    result.m_bool = value;
    return result;
}

Value Value::fromDouble(double value)
{
    Value result;
    result.m_type = DataType::DOUBLE;
    result.m_double = value;
    return result;
}

DataType::Type Value::type() const
{
    return m_type;
}
bool Value::isEmpty() const
{
    return m_type == DataType::NONE;
}

uint32_t Value::valueUint32() const
{
    switch (m_type) {
    case DataType::UINT32:
        return m_uint;
    case DataType::BOOLEAN:
        return m_bool ? 1 : 0;
    case DataType::DOUBLE:
        return clampToUint32(m_double);
    case DataType::STRING: {
        uint64_t parsed = 0;
        return parseWhole(m_text, parsed) && parsed <= 0xFFFFFFFFull ? static_cast<uint32_t>(parsed) : 0;
    }
    default:
        return 0;
    }
}

bool Value::valueBool() const
{
    switch (m_type) {
    case DataType::BOOLEAN:
        return m_bool;
    case DataType::UINT32:
        return m_uint != 0;
    case DataType::DOUBLE:
        return m_double != 0.0;
    case DataType::STRING: {
        Value parsed;
        return parse(DataType::BOOLEAN, m_text, parsed) && parsed.m_bool;
    }
    default:
        return false;
    }
}

double Value::valueDouble() const
{
    switch (m_type) {
    case DataType::DOUBLE:
        return m_double;
    case DataType::UINT32:
        return m_uint;
    case DataType::BOOLEAN:
        return m_bool ? 1.0 : 0.0;
    case DataType::STRING: {
        double parsed = 0.0;
        return parseNumber(m_text, parsed) ? parsed : 0.0;
    }
    default:
        return 0.0;
    }
}

RuvoString Value::toString() const
{
    return RuvoString(toKELString());
}

kel::String Value::toKELString() const
{
    switch (m_type) {
    case DataType::UINT32:
        return kel::String::fromUInt(m_uint);
    case DataType::BOOLEAN:
        return kel::String::fromBool(m_bool);
    case DataType::DOUBLE:
        return kel::String::fromDouble(m_double);
    case DataType::STRING:
        return m_text;
    default:
        return kel::String();
    }
}

bool Value::parse(DataType::Type type, const kel::String &text, Value &out)
{
    switch (type) {
    case DataType::UINT32: {
        uint64_t parsed = 0;
        if (!parseWhole(text, parsed) || parsed > 0xFFFFFFFFull)
            return false;
        out = Value(static_cast<uint32_t>(parsed));
        return true;
    }
    case DataType::BOOLEAN: {
        const kel::String lower = text.trim().toLower();
        if (lower == kel::String(L"true") || lower == kel::String(L"1") || lower == kel::String(L"yes")) {
            out = fromBool(true);
            return true;
        }
        if (lower == kel::String(L"false") || lower == kel::String(L"0") || lower == kel::String(L"no")) {
            out = fromBool(false);
            return true;
        }
        return false;
    }
    case DataType::DOUBLE: {
        double parsed = 0.0;
        if (!parseNumber(text, parsed))
            return false;
        out = fromDouble(parsed);
        return true;
    }
    case DataType::STRING:
        out = Value(text);
        return true;
    default:
        return false;
    }
}

const char *Value::typeName(DataType::Type type)
{
    switch (type) {
    case DataType::UINT32:
        return "UINT32 (a whole number from 0 to 4294967295)";
    case DataType::BOOLEAN:
        return "BOOLEAN (true or false)";
    case DataType::DOUBLE:
        return "DOUBLE (a finite decimal number)";
    case DataType::STRING:
        return "STRING (text)";
    default:
        return "NONE";
    }
}

} // namespace ruvo
