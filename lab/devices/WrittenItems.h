// What a writer of lab devices put into the system: registry keys under HKEY_LOCAL_MACHINE
// (moniker keys, SetupAPI instance keys, driver keys) and files (driver packages), so exactly
// those can be taken away again.
#pragma once

#include <string>
#include <vector>

namespace lab {

struct WrittenItems {
    std::vector<std::wstring> keys;
    std::vector<std::wstring> files;

    void append(const WrittenItems &other);
    // Deletes every key (with its subkeys) and file; missing ones are no error.
    void removeAll() const;

    // The setup's own list, kept in the registry so its next run (and a test hiding the
    // described devices) finds what it wrote.
    static WrittenItems readRecorded();
    // Adds to the recorded list; false when the registry refuses.
    bool record(const std::wstring &label) const;
    // Forgets the recorded list (after its items were removed).
    static void forgetRecorded();
};

} // namespace lab
