#include <ruvo/Value.h>

namespace ruvo {

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
        return m_double <= 0.0 ? 0 : static_cast<uint32_t>(m_double);
    case DataType::STRING: {
        uint64_t parsed = 0;
        return m_text.toUInt(parsed) ? static_cast<uint32_t>(parsed) : 0;
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
        return m_text.toDouble(parsed) ? parsed : 0.0;
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
        if (!text.toUInt(parsed) || parsed > 0xFFFFFFFFull)
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
        if (!text.toDouble(parsed))
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
        return "DOUBLE (a number)";
    case DataType::STRING:
        return "STRING (text)";
    default:
        return "NONE";
    }
}

} // namespace ruvo
