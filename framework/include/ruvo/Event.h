#pragma once

#include <ruvo/Variables.h>

namespace ruvo {

// A result message a test module posts as an error or a warning.
class RUVO_API Event {
public:
    explicit Event(const RuvoString &key);

    Event &setVariable(const RuvoString &name, const Value &value);
    RuvoString key() const;
    const Variables &variables() const;
    // The English text of the key with the variables filled in.
    RuvoString localizedMessage() const;

private:
    RuvoString m_key;
    Variables m_variables;
};

} // namespace ruvo
