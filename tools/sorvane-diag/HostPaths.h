// Folders and file names the host writes to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace sorvane {
namespace diag {

class HostPaths {
public:
    static std::wstring absolute(const std::wstring &path);
    static std::wstring join(const std::wstring &folder, const std::wstring &name);
    // Creates the folder and any missing parents; throws HostError when it cannot.
    static void createFolder(const std::wstring &path);
    // Writes the bytes as the whole file; throws HostError when it cannot.
    static void writeFile(const std::wstring &path, const void *data, size_t size);
    // The same, but the file is replaced in one step: an earlier file stays whole until the
    // new one is complete.
    static void replaceFile(const std::wstring &path, const void *data, size_t size);
    // The size of a file in bytes; -1 when it cannot be read.
    static int64_t fileSize(const std::wstring &path);
    // The Windows temporary folder, with a trailing backslash.
    static std::wstring tempFolder();
    // "<temp>\sorvane-diag\<command>-20260121-141700", created new for a command's files
    // ("...-141700-2" when an earlier run of the same second has that one).
    static std::wstring defaultOutputFolder(const std::wstring &command);
    // Under Wine, the path of the same file on the host system ("/root/.wine/..."), so a
    // person can open it there; empty on Windows.
    static std::wstring hostSystemPath(const std::wstring &path);
    // The path for a person: the Windows path, and under Wine the host system's path on
    // the next line.
    static std::wstring shown(const std::wstring &path);
};

} // namespace diag
} // namespace sorvane
