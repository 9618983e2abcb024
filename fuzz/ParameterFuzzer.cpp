// The framework's reading of parameter values over arbitrary text, for every declared type:
// what is accepted is decimal and finite, reads back as itself, and no reading of any value
// as any other type is undefined (a double far beyond the whole-number range, NaN).
#include "Utf16Text.h"

#include <ruvo/Value.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

using ruvo::DataType;
using ruvo::Value;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

bool onlyDigits(const kel::String &text)
{
    for (int i = 0; i < text.length(); ++i) {
        if (text[i] < L'0' || text[i] > L'9')
            return false;
    }
    return !text.isEmpty();
}

bool isAnyOf(const kel::String &text, const wchar_t *const *words)
{
    for (; *words; ++words) {
        if (text == kel::String(*words))
            return true;
    }
    return false;
}

// Every reading of a value, as a module would read a parameter of another type.
void readEveryWay(const Value &value)
{
    const uint32_t whole = value.valueUint32();
    const double number = value.valueDouble();
    const bool flag = value.valueBool();
    const kel::String text = value.toKELString();
    (void)whole;
    (void)flag;
    (void)text;
    if (value.type() == DataType::UINT32 || value.type() == DataType::BOOLEAN)
        require(std::isfinite(number));
}

void checkAccepted(DataType::Type type, const kel::String &text, const Value &parsed)
{
    require(parsed.type() == type);
    const kel::String trimmed = text.trim();
    switch (type) {
    case DataType::UINT32: {
        require(onlyDigits(trimmed));
        Value again;
        require(Value::parse(type, parsed.toKELString(), again) && again.valueUint32() == parsed.valueUint32());
        break;
    }
    case DataType::DOUBLE: {
        require(std::isfinite(parsed.valueDouble()));
        for (int i = 0; i < trimmed.length(); ++i)
            require(std::wcschr(L"0123456789.+-eE", trimmed[i]) != nullptr);
        break;
    }
    case DataType::BOOLEAN: {
        static const wchar_t *const kWords[] = {L"true", L"1", L"yes", L"false", L"0", L"no", nullptr};
        require(isAnyOf(trimmed.toLower(), kWords));
        break;
    }
    case DataType::STRING:
        require(parsed.toKELString() == text);
        break;
    default:
        std::abort();
    }
    readEveryWay(parsed);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const kel::String text = fuzz::utf16Text(data, size);
    for (const DataType::Type type :
         {DataType::NONE, DataType::UINT32, DataType::BOOLEAN, DataType::DOUBLE, DataType::STRING}) {
        Value parsed;
        if (Value::parse(type, text, parsed))
            checkAccepted(type, text, parsed);
        else
            require(parsed.isEmpty());
    }
    // Text set as a value of its own, and any eight bytes as a double (NaN, infinities, huge).
    readEveryWay(Value(text));
    if (size >= sizeof(double)) {
        double number = 0;
        std::memcpy(&number, data, sizeof(double));
        readEveryWay(Value::fromDouble(number));
    }
    return 0;
}
