#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <utility>
#include <vector>

namespace sorvane {
namespace test {

// A JSON document read by nlohmann::json, for reading reports in tests. A missing member or
// index gives a null value, so chained lookups never throw.
class JsonValue {
public:
    enum Type { NUL, BOOLEAN, NUMBER, STRING, ARRAY, OBJECT };

    JsonValue() : m_type(NUL), m_flag(false), m_number(0.0) {}

    // Throws std::runtime_error, naming the line and column, when `text` is not one JSON value.
    static JsonValue parse(const std::string &text);

    Type type() const { return m_type; }
    bool isNull() const { return m_type == NUL; }
    bool flag() const { return m_flag; }
    double number() const { return m_number; }
    const std::string &text() const { return m_text; }
    size_t size() const { return m_type == OBJECT ? m_members.size() : m_items.size(); }
    const JsonValue &operator[](size_t index) const;
    const JsonValue &operator[](const std::string &key) const;
    bool has(const std::string &key) const;
    const std::vector<std::pair<std::string, JsonValue>> &members() const { return m_members; }

private:
    static JsonValue of(const nlohmann::ordered_json &node);

    Type m_type;
    bool m_flag;
    double m_number;
    std::string m_text;
    std::vector<JsonValue> m_items;
    std::vector<std::pair<std::string, JsonValue>> m_members;
};

} // namespace test
} // namespace sorvane
