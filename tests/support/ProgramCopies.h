#pragma once

#include <string>
#include <vector>

namespace sorvane {
namespace test {

// Copies of the waiting helper program under other names (those of Windows Media Center
// or the FastAccess tray program) in a private temp folder, removed with the folder.
class ProgramCopies {
public:
    ProgramCopies();
    ~ProgramCopies();
    ProgramCopies(const ProgramCopies &) = delete;
    ProgramCopies &operator=(const ProgramCopies &) = delete;

    // The copy's path, or empty when it could not be made.
    std::wstring copyAs(const wchar_t *name);

private:
    std::wstring m_folder;
    std::vector<std::wstring> m_copies;
};

// The folder of the running test program, with a trailing backslash.
std::wstring binFolder();

} // namespace test
} // namespace sorvane
