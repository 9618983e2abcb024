#include "JsonValue.h"

#include <cstdlib>
#include <stdexcept>

namespace sorvane {
namespace test {

namespace {
const JsonValue& nullValue()
{
    static const JsonValue none;
    return none;
}
} // namespace

class JsonValue::Parser {
public:
    explicit Parser(const std::string& text) : m_text(text), m_at(0) {}

    JsonValue document()
    {
        JsonValue value = parseValue();
        skipSpace();
        if (m_at != m_text.size()) fail("text after the value");
        return value;
    }

private:
    [[noreturn]] void fail(const char* what)
    {
        throw std::runtime_error(std::string("JSON: ") + what + " at offset " + std::to_string(m_at));
    }

    void skipSpace()
    {
        while (m_at < m_text.size() && (m_text[m_at] == ' ' || m_text[m_at] == '\n' || m_text[m_at] == '\r' ||
                                        m_text[m_at] == '\t'))
            ++m_at;
    }

    bool take(char c)
    {
        skipSpace();
        if (m_at < m_text.size() && m_text[m_at] == c) {
            ++m_at;
            return true;
        }
        return false;
    }

    void expect(char c)
    {
        if (!take(c)) fail((std::string("expected ") + c).c_str());
    }

    bool takeWord(const char* word)
    {
        const std::string w(word);
        if (m_text.compare(m_at, w.size(), w) != 0) return false;
        m_at += w.size();
        return true;
    }

    JsonValue parseValue()
    {
        skipSpace();
        if (m_at >= m_text.size()) fail("unexpected end");
        JsonValue value;
        const char c = m_text[m_at];
        if (c == '{') return parseObject();
        if (c == '[') return parseArray();
        if (c == '"') {
            value.m_type = STRING;
            value.m_text = parseString();
        } else if (takeWord("true") || takeWord("false")) {
            value.m_type = BOOLEAN;
            value.m_flag = c == 't';
        } else if (takeWord("null")) {
            value.m_type = NUL;
        } else {
            char* end = nullptr;
            value.m_number = strtod(m_text.c_str() + m_at, &end);
            if (end == m_text.c_str() + m_at) fail("not a value");
            value.m_type = NUMBER;
            m_at = static_cast<size_t>(end - m_text.c_str());
        }
        return value;
    }

    JsonValue parseObject()
    {
        JsonValue value;
        value.m_type = OBJECT;
        expect('{');
        if (take('}')) return value;
        do {
            skipSpace();
            const std::string key = parseString();
            expect(':');
            value.m_members.push_back(std::make_pair(key, parseValue()));
        } while (take(','));
        expect('}');
        return value;
    }

    JsonValue parseArray()
    {
        JsonValue value;
        value.m_type = ARRAY;
        expect('[');
        if (take(']')) return value;
        do value.m_items.push_back(parseValue());
        while (take(','));
        expect(']');
        return value;
    }

    std::string parseString()
    {
        if (m_at >= m_text.size() || m_text[m_at] != '"') fail("expected a string");
        std::string out;
        for (++m_at; m_at < m_text.size() && m_text[m_at] != '"'; ++m_at) {
            if (m_text[m_at] != '\\') {
                out += m_text[m_at];
                continue;
            }
            if (++m_at >= m_text.size()) break;
            switch (m_text[m_at]) {
            case 'n': out += '\n'; break;
            case 'r': out += '\r'; break;
            case 't': out += '\t'; break;
            case 'u': appendUtf8(std::strtoul(m_text.substr(m_at + 1, 4).c_str(), nullptr, 16), out); m_at += 4; break;
            default: out += m_text[m_at];
            }
        }
        if (m_at >= m_text.size()) fail("unterminated string");
        ++m_at;
        return out;
    }

    static void appendUtf8(unsigned long code, std::string& out)
    {
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }

    const std::string& m_text;
    size_t m_at;
};

JsonValue JsonValue::parse(const std::string& text) { return Parser(text).document(); }

const JsonValue& JsonValue::operator[](size_t index) const
{
    return m_type == ARRAY && index < m_items.size() ? m_items[index] : nullValue();
}

const JsonValue& JsonValue::operator[](const std::string& key) const
{
    for (const auto& member : m_members) {
        if (member.first == key) return member.second;
    }
    return nullValue();
}

bool JsonValue::has(const std::string& key) const
{
    for (const auto& member : m_members) {
        if (member.first == key) return true;
    }
    return false;
}

} // namespace test
} // namespace sorvane
