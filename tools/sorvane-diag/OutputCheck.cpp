#include "OutputCheck.h"
#include "HostError.h"
#include "HostPaths.h"
#include "ScopedFind.h"
#include "UsageError.h"

#include <windows.h>

namespace sorvane {
namespace diag {

void OutputCheck::check(const HostOptions &options)
{
    if (!options.jsonPath.empty() && !options.jsonToStdout())
        checkFileFolder(options.jsonPath, L"--json");
    if (!options.logPath.empty())
        checkFileFolder(options.logPath, L"--log");
    if (!options.keepTsPath.empty())
        checkFileFolder(options.keepTsPath, L"--keep-ts");
    if (!options.outputFolder.empty())
        checkOutputFolder(HostPaths::absolute(options.outputFolder));
}

void OutputCheck::checkFileFolder(const std::wstring &path, const std::wstring &option)
{
    const std::wstring full = HostPaths::absolute(path);
    const size_t slash = full.find_last_of(L"\\/");
    if (slash == std::wstring::npos)
        return;
    const std::wstring folder = full.substr(0, slash + 1);
    if (!isFolder(folder))
        throw UsageError(L"The folder " + folder + L" for " + option + L" " + path + L" does not exist.");
    if (isFolder(full))
        throw UsageError(L"The " + option + L" file " + full + L" is a folder.");
}

void OutputCheck::checkOutputFolder(const std::wstring &path)
{
    if (isFolder(path)) {
        const std::wstring earlier = earlierFrame(path);
        if (!earlier.empty())
            throw UsageError(L"The --out folder " + path + L" already holds an earlier run's images (" + earlier +
                             L"); give a new or empty folder, so that nothing is overwritten.");
    }
    try {
        HostPaths::createFolder(path);
    } catch (const HostError &error) {
        throw UsageError(L"Cannot use the --out folder: " + error.message());
    }
    // Writing a file is the only sure test of write access.
    const std::wstring probe = HostPaths::join(path, L"sorvane-diag-write-test.tmp");
    const HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        throw UsageError(L"Cannot write into the --out folder " + path + L": " +
                         HostError::describe(HRESULT_FROM_WIN32(GetLastError())));
    CloseHandle(file);
}

std::wstring OutputCheck::earlierFrame(const std::wstring &folder)
{
    for (const wchar_t *pattern : {L"frame-*.png", L"frame-*.jpg", L"contact-sheet.png"}) {
        const std::wstring found = ScopedFind::firstFile(HostPaths::join(folder, pattern));
        if (!found.empty())
            return found;
    }
    return std::wstring();
}

bool OutputCheck::isFolder(const std::wstring &path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace diag
} // namespace sorvane
