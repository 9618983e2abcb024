#include "JsonValue.h"

#include <nlohmann/json.hpp>

#include <stdexcept>

namespace sorvane {
namespace test {

namespace {
const JsonValue &nullValue()
{
    static const JsonValue none;
    return none;
}
} // namespace

JsonValue JsonValue::parse(const std::string &text)
{
    try {
        return of(nlohmann::ordered_json::parse(text));
    } catch (const nlohmann::ordered_json::parse_error &error) {
        throw std::runtime_error(error.what());
    }
}

JsonValue JsonValue::of(const nlohmann::ordered_json &node)
{
    JsonValue value;
    if (node.is_boolean()) {
        value.m_type = BOOLEAN;
        value.m_flag = node.get<bool>();
    } else if (node.is_number()) {
        value.m_type = NUMBER;
        value.m_number = node.get<double>();
    } else if (node.is_string()) {
        value.m_type = STRING;
        value.m_text = node.get<std::string>();
    } else if (node.is_array()) {
        value.m_type = ARRAY;
        for (const nlohmann::ordered_json &item : node)
            value.m_items.push_back(of(item));
    } else if (node.is_object()) {
        value.m_type = OBJECT;
        for (const auto &member : node.items())
            value.m_members.push_back(std::make_pair(member.key(), of(member.value())));
    }
    return value;
}

const JsonValue &JsonValue::operator[](size_t index) const
{
    return m_type == ARRAY && index < m_items.size() ? m_items[index] : nullValue();
}

const JsonValue &JsonValue::operator[](const std::string &key) const
{
    for (const auto &member : m_members) {
        if (member.first == key)
            return member.second;
    }
    return nullValue();
}

bool JsonValue::has(const std::string &key) const
{
    for (const auto &member : m_members) {
        if (member.first == key)
            return true;
    }
    return false;
}

} // namespace test
} // namespace sorvane
