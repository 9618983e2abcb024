// Hides every device the lab's setup wrote (monikers, SetupAPI records, driver packages) for
// the life of the object, so a test sees only the hardware it describes itself. The hidden
// items wait under HKLM\Software\Sorvane\Lab\Hidden and in the Windows folder's
// SorvaneLabHidden folder; a program that died while hiding is made good by the next one.
#pragma once

#include <string>

namespace lab {

class HiddenLabDevices {
public:
    // False with a message when an item cannot be put aside (what was hidden is restored).
    bool hide(std::wstring &error);
    ~HiddenLabDevices();

    // Brings back whatever an earlier hiding left aside.
    static void restore();
    // Drops what an earlier hiding left aside (the setup writes the devices afresh).
    static void discard();

private:
    bool m_hidden = false;
};

} // namespace lab
