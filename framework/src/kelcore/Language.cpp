#include <kel/Language.h>

namespace kel {

Language::Language() {}
Language::Language(const String& tag) : m_tag(tag.toLower()) {}

String Language::toString() const { return m_tag; }

bool Language::operator==(const Language& other) const { return m_tag == other.m_tag; }

} // namespace kel
