#include "OutputCheck.h"
#include "CaptureClasses.h"
#include "HostError.h"
#include "HostPaths.h"
#include "RecordCommand.h"
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
    if (options.command == L"record")
        checkRecording(options.recordingName.empty() ? RecordCommand::kDefaultName : options.recordingName);
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
    const std::wstring problem = writeProblem(folder, full);
    if (!problem.empty())
        throw UsageError(L"Cannot write the " + option + L" file " + full + L": " + problem);
}

void OutputCheck::checkRecording(const std::wstring &name)
{
    const std::wstring path = CaptureClasses::recordingPath(name);
    const std::wstring folder = path.substr(0, path.find_last_of(L"\\/") + 1);
    const std::wstring problem = isFolder(folder) ? writeProblem(folder, path) : L"the folder does not exist.";
    if (!problem.empty())
        throw UsageError(L"Cannot write the recording " + path + L": " + problem);
}

std::wstring OutputCheck::writeProblem(const std::wstring &folder, const std::wstring &file)
{
    // An earlier file is replaced: it must take writing (not read-only, not held open).
    if (GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES) {
        const HANDLE existing = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (existing == INVALID_HANDLE_VALUE)
            return HostError::describe(HRESULT_FROM_WIN32(GetLastError()));
        CloseHandle(existing);
    }
    return probeFolder(folder);
}

std::wstring OutputCheck::probeFolder(const std::wstring &folder)
{
    // Writing a file is the only sure test of write access.
    const std::wstring probe = HostPaths::join(folder, L"sorvane-diag-write-test.tmp");
    const HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return HostError::describe(HRESULT_FROM_WIN32(GetLastError()));
    CloseHandle(file);
    return std::wstring();
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
    const std::wstring problem = probeFolder(path);
    if (!problem.empty())
        throw UsageError(L"Cannot write into the --out folder " + path + L": " + problem);
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
