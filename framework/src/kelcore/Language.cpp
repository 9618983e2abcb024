#include <kel/Language.h>

namespace kel {

namespace {

// The framework's language list; a language's value is its position here.
const wchar_t *const kLanguages[] = {
    L"en", L"ar", L"zh-cn", L"zh-tw", L"cs", L"da", L"nl", L"fi", L"he", L"fr",    L"de",
    L"el", L"hu", L"is",    L"it",    L"ja", L"ko", L"no", L"pl", L"pt", L"pt-br", L"ru",
    L"es", L"sv", L"tr",    L"sk",    L"sl", L"hr", L"ro", L"bg", L"uk", L"th",
};

} // namespace

Language::Language() {}
Language::Language(const String &tag) : m_tag(tag.toLower()) {}

String Language::toString() const
{
    return m_tag;
}

int Language::value() const
{
    for (int i = 0; i < static_cast<int>(sizeof(kLanguages) / sizeof(kLanguages[0])); ++i) {
        if (m_tag == String(kLanguages[i]))
            return i;
    }
    return -1;
}

bool Language::operator==(const Language &other) const
{
    return m_tag == other.m_tag;
}

} // namespace kel
