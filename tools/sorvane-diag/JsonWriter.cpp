#include "JsonWriter.h"

#include <kel/String.h>

#include <cmath>
#include <utility>

namespace sorvane {
namespace diag {

namespace {

std::string utf8(const std::wstring &text)
{
    return kel::String(text).toUtf8();
}

} // namespace

nlohmann::ordered_json &JsonWriter::place(nlohmann::ordered_json content)
{
    if (m_open.empty()) {
        m_document = std::move(content);
        return m_document;
    }
    nlohmann::ordered_json &parent = *m_open.back();
    if (parent.is_array()) {
        parent.push_back(std::move(content));
        return parent.back();
    }
    nlohmann::ordered_json &member = parent[m_key];
    member = std::move(content);
    return member;
}

JsonWriter &JsonWriter::open(nlohmann::ordered_json container)
{
    m_open.push_back(&place(std::move(container)));
    return *this;
}

JsonWriter &JsonWriter::close()
{
    m_open.pop_back();
    // A text that is not valid UTF-8 keeps its place, with U+FFFD for the bad bytes.
    if (m_open.empty())
        m_text = m_document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
    return *this;
}

JsonWriter &JsonWriter::add(nlohmann::ordered_json content)
{
    place(std::move(content));
    return *this;
}

JsonWriter &JsonWriter::beginObject()
{
    return open(nlohmann::ordered_json::object());
}

JsonWriter &JsonWriter::endObject()
{
    return close();
}

JsonWriter &JsonWriter::beginArray()
{
    return open(nlohmann::ordered_json::array());
}

JsonWriter &JsonWriter::endArray()
{
    return close();
}

JsonWriter &JsonWriter::key(const std::wstring &name)
{
    m_key = utf8(name);
    return *this;
}

JsonWriter &JsonWriter::value(const std::wstring &text)
{
    return add(utf8(text));
}

JsonWriter &JsonWriter::value(const wchar_t *text)
{
    return value(std::wstring(text));
}

JsonWriter &JsonWriter::value(int number)
{
    return add(static_cast<int64_t>(number));
}

JsonWriter &JsonWriter::value(int64_t number)
{
    return add(number);
}

JsonWriter &JsonWriter::value(uint64_t number)
{
    return add(number);
}

JsonWriter &JsonWriter::value(double number)
{
    return std::isfinite(number) ? add(number) : null();
}

JsonWriter &JsonWriter::value(bool flag)
{
    return add(flag);
}

JsonWriter &JsonWriter::null()
{
    return add(nullptr);
}

} // namespace diag
} // namespace sorvane
