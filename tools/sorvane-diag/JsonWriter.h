// Writes indented JSON (UTF-8) one token at a time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class JsonWriter {
public:
    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    // The name of the next member of the enclosing object.
    JsonWriter& key(const std::wstring& name);

    JsonWriter& value(const std::wstring& text);
    JsonWriter& value(const wchar_t* text);
    JsonWriter& value(int number);
    JsonWriter& value(int64_t number);
    JsonWriter& value(uint64_t number);
    JsonWriter& value(double number);
    JsonWriter& value(bool flag);
    JsonWriter& null();

    template <class T>
    JsonWriter& field(const std::wstring& name, const T& content)
    {
        return key(name).value(content);
    }

    // The document so far, ending with a newline once the outermost value is closed.
    const std::string& text() const { return m_text; }

    static std::string quoted(const std::wstring& text);

private:
    struct Level {
        bool isArray;
        int count;
    };
    void beforeValue();
    void open(char bracket, bool isArray);
    void close(char bracket);
    void newline();

    std::string m_text;
    std::vector<Level> m_levels;
    bool m_afterKey = false;
};

} // namespace diag
} // namespace sorvane
