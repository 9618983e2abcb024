#pragma once

#include <ruvo/Variables.h>

namespace ruvo {

class RUVO_API LocalizedString {
public:
    explicit LocalizedString(const RuvoString &key);

    LocalizedString &setVariable(const RuvoString &name, const Value &value);
    RuvoString key() const;
    const Variables &variables() const;
    RuvoString localizedString() const;

private:
    RuvoString m_key;
    Variables m_variables;
};

} // namespace ruvo
