#include "HostPaths.h"
#include "HostError.h"

#include <kel/FileSystem.h>
#include <kel/String.h>

#include <windows.h>
#include <shlobj.h>

#include <cstdio>
#include <cwchar>
#include <memory>
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
    std::unique_ptr<FILE, int (*)(FILE *)> file(_wfopen(path.c_str(), L"wb"), fclose);
    if (!file || fwrite(data, 1, size, file.get()) != size)
        throw HostError(L"Writing " + path + L" failed.");
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
