#include "HostPaths.h"
#include "HostError.h"

#include <kel/FileSystem.h>
#include <kel/String.h>

#include <windows.h>
#include <shlobj.h>

#include <cstdio>
#include <cwchar>
#include <vector>

namespace sorvane {
namespace diag {

std::wstring HostPaths::absolute(const std::wstring &path)
{
    const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (!needed)
        return path;
    std::vector<wchar_t> buffer(needed + 1, L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), needed + 1, buffer.data(), nullptr);
    return length ? std::wstring(buffer.data(), length) : path;
}

std::wstring HostPaths::join(const std::wstring &folder, const std::wstring &name)
{
    if (folder.empty())
        return name;
    const wchar_t last = folder[folder.size() - 1];
    return last == L'\\' || last == L'/' ? folder + name : folder + L"\\" + name;
}

void HostPaths::createFolder(const std::wstring &path)
{
    const std::wstring full = absolute(path);
    const int error = SHCreateDirectoryExW(nullptr, full.c_str(), nullptr);
    if (error != ERROR_SUCCESS && error != ERROR_ALREADY_EXISTS)
        throw HostError(L"Creating the folder " + full, HRESULT_FROM_WIN32(static_cast<DWORD>(error)));
    const DWORD attributes = GetFileAttributesW(full.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY))
        throw HostError(L"The path " + full + L" exists and is not a folder.");
}

void HostPaths::writeFile(const std::wstring &path, const void *data, size_t size)
{
    FILE *file = _wfopen(path.c_str(), L"wb");
    if (!file)
        throw HostError(L"Writing " + path + L" failed.");
    const bool written = fwrite(data, 1, size, file) == size;
    // The last bytes reach the disk only at the close, which may fail as well.
    const bool closed = fclose(file) == 0;
    if (!written || !closed)
        throw HostError(L"Writing " + path + L" failed.");
}

void HostPaths::replaceFile(const std::wstring &path, const void *data, size_t size)
{
    // Written beside the file first and moved over it whole, so that a write cut short (a
    // full disk, a forced quit) leaves the earlier file, never half of a new one.
    const std::wstring partial = path + L".partial-" + std::to_wstring(GetCurrentProcessId());
    try {
        writeFile(partial, data, size);
    } catch (const HostError &) {
        DeleteFileW(partial.c_str());
        throw HostError(L"Writing " + path + L" failed.");
    }
    if (!MoveFileExW(partial.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        const DWORD error = GetLastError();
        DeleteFileW(partial.c_str());
        throw HostError(L"Replacing " + path, HRESULT_FROM_WIN32(error));
    }
}

int64_t HostPaths::fileSize(const std::wstring &path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return -1;
    return (static_cast<int64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

std::wstring HostPaths::tempFolder()
{
    return kel::FileSystem::tempDirectory().wstr();
}

std::wstring HostPaths::defaultOutputFolder(const std::wstring &command)
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t stamp[32];
    swprintf(stamp, 32, L"-%04u%02u%02u-%02u%02u%02u", now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
             now.wSecond);
    const std::wstring parent = join(tempFolder(), L"sorvane-diag");
    createFolder(parent);
    // Two runs in the same second get folders of their own: the first to create a name owns it.
    const std::wstring base = join(parent, command + stamp);
    for (unsigned attempt = 1;; ++attempt) {
        const std::wstring folder = attempt == 1 ? base : base + L"-" + std::to_wstring(attempt);
        if (CreateDirectoryW(folder.c_str(), nullptr))
            return folder;
        const DWORD error = GetLastError();
        if (error != ERROR_ALREADY_EXISTS)
            throw HostError(L"Creating the folder " + folder, HRESULT_FROM_WIN32(error));
    }
}

std::wstring HostPaths::hostSystemPath(const std::wstring &path)
{
    // Wine's kernel32 exports the translation; Windows has no such function.
    typedef char *(CDECL * UnixFileName)(const wchar_t *);
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    const FARPROC found = kernel ? GetProcAddress(kernel, "wine_get_unix_file_name") : nullptr;
    // Through the generic function type, which converts to any other without a warning.
    typedef void (*AnyFunction)();
    const UnixFileName unixFileName = reinterpret_cast<UnixFileName>(reinterpret_cast<AnyFunction>(found));
    if (!unixFileName)
        return std::wstring();
    char *translated = unixFileName(path.c_str());
    if (!translated)
        return std::wstring();
    const std::wstring text = kel::String::fromUtf8(translated).wstr();
    HeapFree(GetProcessHeap(), 0, translated);
    return text;
}

std::wstring HostPaths::shown(const std::wstring &path)
{
    const std::wstring hostPath = hostSystemPath(path);
    return hostPath.empty() ? path : path + L"\n  (" + hostPath + L")";
}

} // namespace diag
} // namespace sorvane
