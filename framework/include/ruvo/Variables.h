#pragma once

#include <ruvo/Value.h>
#include <kel/OrderedHashTable.h>

namespace ruvo {

// Named substitution variables of an event or localized string, in the order first set.
class RUVO_API Variables {
public:
    void set(const RuvoString &name, const Value &value);
    bool get(const kel::String &name, Value &out) const;
    int size() const;
    kel::String nameAt(int index) const;
    Value valueAt(int index) const;
    // Replaces every "{name}" in `text` by the variable's text; unknown names stay.
    kel::String substitute(const kel::String &text) const;

private:
    kel::OrderedHashTable<kel::String, Value> m_values;
};

} // namespace ruvo
