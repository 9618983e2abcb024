// Builds a JSON document (nlohmann::json, members in the order written) one token at a time,
// for code that writes its part of a report as it walks its own data.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class JsonWriter {
public:
    JsonWriter &beginObject();
    JsonWriter &endObject();
    JsonWriter &beginArray();
    JsonWriter &endArray();
    // The name of the next member of the enclosing object.
    JsonWriter &key(const std::wstring &name);

    JsonWriter &value(const std::wstring &text);
    JsonWriter &value(const wchar_t *text);
    JsonWriter &value(int number);
    JsonWriter &value(int64_t number);
    JsonWriter &value(uint64_t number);
    // Infinities and NaN, which JSON cannot hold, become null.
    JsonWriter &value(double number);
    JsonWriter &value(bool flag);
    JsonWriter &null();

    template <class T>
    JsonWriter &field(const std::wstring &name, const T &content)
    {
        return key(name).value(content);
    }

    // The indented document (UTF-8) ending with a newline, once the outermost value is closed;
    // empty before.
    const std::string &text() const { return m_text; }

private:
    // Places `content` where the next value goes and returns it there.
    nlohmann::ordered_json &place(nlohmann::ordered_json content);
    JsonWriter &open(nlohmann::ordered_json container);
    JsonWriter &close();
    JsonWriter &add(nlohmann::ordered_json content);

    nlohmann::ordered_json m_document;
    // The containers being written, innermost last. Each is the newest value of its parent,
    // which takes nothing more until it closes, so the pointers stay valid.
    std::vector<nlohmann::ordered_json *> m_open;
    std::string m_key;
    std::string m_text;
};

} // namespace diag
} // namespace sorvane
