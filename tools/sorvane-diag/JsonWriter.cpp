#include "JsonWriter.h"

#include <kel/String.h>

#include <cmath>
#include <cstdio>

namespace sorvane {
namespace diag {

void JsonWriter::newline()
{
    m_text += '\n';
    m_text.append(m_levels.size() * 2, ' ');
}

void JsonWriter::beforeValue()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_levels.empty()) return;
    if (m_levels.back().count++ > 0) m_text += ',';
    newline();
}

void JsonWriter::open(char bracket, bool isArray)
{
    beforeValue();
    m_text += bracket;
    Level level = {isArray, 0};
    m_levels.push_back(level);
}

void JsonWriter::close(char bracket)
{
    const bool empty = m_levels.back().count == 0;
    m_levels.pop_back();
    if (!empty) newline();
    m_text += bracket;
    if (m_levels.empty()) m_text += '\n';
}

JsonWriter& JsonWriter::beginObject()
{
    open('{', false);
    return *this;
}

JsonWriter& JsonWriter::endObject()
{
    close('}');
    return *this;
}

JsonWriter& JsonWriter::beginArray()
{
    open('[', true);
    return *this;
}

JsonWriter& JsonWriter::endArray()
{
    close(']');
    return *this;
}

JsonWriter& JsonWriter::key(const std::wstring& name)
{
    beforeValue();
    m_text += quoted(name) + ": ";
    m_afterKey = true;
    return *this;
}

JsonWriter& JsonWriter::value(const std::wstring& text)
{
    beforeValue();
    m_text += quoted(text);
    return *this;
}

JsonWriter& JsonWriter::value(const wchar_t* text) { return value(std::wstring(text)); }

JsonWriter& JsonWriter::value(int number) { return value(static_cast<int64_t>(number)); }

JsonWriter& JsonWriter::value(int64_t number)
{
    beforeValue();
    m_text += std::to_string(number);
    return *this;
}

JsonWriter& JsonWriter::value(uint64_t number)
{
    beforeValue();
    m_text += std::to_string(number);
    return *this;
}

JsonWriter& JsonWriter::value(double number)
{
    if (!std::isfinite(number)) return null();
    beforeValue();
    char buffer[32];
    snprintf(buffer, sizeof buffer, "%.17g", number);
    m_text += buffer;
    return *this;
}

JsonWriter& JsonWriter::value(bool flag)
{
    beforeValue();
    m_text += flag ? "true" : "false";
    return *this;
}

JsonWriter& JsonWriter::null()
{
    beforeValue();
    m_text += "null";
    return *this;
}

std::string JsonWriter::quoted(const std::wstring& text)
{
    const std::string utf8 = kel::String(text).toUtf8();
    std::string out = "\"";
    for (const char c : utf8) {
        const unsigned char byte = static_cast<unsigned char>(c);
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (byte < 0x20) {
                char escaped[8];
                snprintf(escaped, sizeof escaped, "\\u%04x", byte);
                out += escaped;
            } else {
                out += c;
            }
        }
    }
    return out + "\"";
}

} // namespace diag
} // namespace sorvane
