#pragma once

#include <ruvo/DataType.h>
#include <ruvo/RuvoString.h>
#include <cstdint>

namespace ruvo {

// A typed parameter or variable value. Readers ask for the type they expect; a text
// value is parsed, a number is printed.
class RUVO_API Value {
public:
    Value();
    Value(uint32_t value);
    Value(const RuvoString &value);
    Value(const kel::String &value);
    Value(const char *value);
    static Value fromBool(bool value);
    static Value fromDouble(double value);

    DataType::Type type() const;
    bool isEmpty() const;
    uint32_t valueUint32() const;
    bool valueBool() const;
    double valueDouble() const;
    RuvoString toString() const;
    kel::String toKELString() const;

    // Parses `text` as `type`; false (and the value untouched) when it does not fit.
    static bool parse(DataType::Type type, const kel::String &text, Value &out);
    static const char *typeName(DataType::Type type);

private:
    DataType::Type m_type;
    uint32_t m_uint;
    bool m_bool;
    double m_double;
    kel::String m_text;
};

} // namespace ruvo
