#pragma once

#include <ruvo/Export.h>
#include <kel/String.h>

namespace ruvo {

// The framework's string at its module boundary; converts to and from kel::String.
class RUVO_API RuvoString {
public:
    RuvoString();
    RuvoString(const char *narrow);
    RuvoString(const wchar_t *text);
    RuvoString(const kel::String &text);

    kel::String toKELString() const;
    const wchar_t *c_str() const;
    bool isEmpty() const;
    bool operator==(const RuvoString &other) const;
    bool operator!=(const RuvoString &other) const;

private:
    kel::String m_text;
};

} // namespace ruvo
