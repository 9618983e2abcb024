#include <kel/FileSystem.h>

#include <windows.h>

namespace kel {

bool FileSystem::exists(const String &path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool FileSystem::removeFile(const String &path)
{
    if (DeleteFileW(path.c_str()))
        return true;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

String FileSystem::tempDirectory()
{
    wchar_t buffer[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, buffer);
    return length ? String(buffer, static_cast<int>(length)) : String();
}

} // namespace kel
