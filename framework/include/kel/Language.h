#pragma once

#include <kel/String.h>

namespace kel {

// A language tag in lower case: "en", "de", "zh-cn", "zh-tw", "pt-br".
class KEL_API Language {
public:
    Language();
    explicit Language(const String &tag);

    String toString() const;
    // The language's number in the framework's language list; -1 for one it does not know.
    int value() const;
    bool operator==(const Language &other) const;

private:
    String m_tag;
};

} // namespace kel
