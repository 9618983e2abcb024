#pragma once

#include <ruvo/RuvoString.h>

namespace ruvo {

// English texts of the event and string keys modules declare; "{name}" marks a variable.
class RUVO_API MessageCatalog {
public:
    // The text of `key`, or the key itself when the catalogue has none.
    static kel::String text(const kel::String &key);
    static bool has(const kel::String &key);
};

} // namespace ruvo
