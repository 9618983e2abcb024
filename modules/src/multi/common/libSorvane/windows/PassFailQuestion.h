// The native question box asked after an interactive preview: Yes and No relabelled with
// the localized "Pass" and "Fail" texts, Cancel kept.
#pragma once

#include <kel/String.h>

namespace sorvane {

class PassFailQuestion {
public:
    // Shows the box with `title` as caption and returns the message-box answer
    // (IDYES, IDNO for the fail button, IDCANCEL).
    static int ask(const kel::String &title);

    // The style of the box: Yes/No/Cancel, question icon, system-modal, and right-to-left
    // reading for the languages written that way.
    static unsigned style();
};

} // namespace sorvane
