#include "recording/SinkFile.h"

namespace lab {

namespace {

HRESULT lastError()
{
    return HRESULT_FROM_WIN32(GetLastError());
}

OVERLAPPED at(ULONGLONG position)
{
    OVERLAPPED where = {};
    where.Offset = static_cast<DWORD>(position);
    where.OffsetHigh = static_cast<DWORD>(position >> 32);
    return where;
}

} // namespace

SinkFile::~SinkFile()
{
    closeLocked();
}

void SinkFile::setPath(const std::wstring &path)
{
    std::lock_guard<std::mutex> guard(m_lock);
    closeLocked();
    m_path = path;
}

std::wstring SinkFile::path()
{
    std::lock_guard<std::mutex> guard(m_lock);
    return m_path;
}

HRESULT SinkFile::writeAt(ULONGLONG position, const void *data, ULONG size)
{
    std::lock_guard<std::mutex> guard(m_lock);
    HRESULT hr = openLocked();
    if (FAILED(hr))
        return hr;
    OVERLAPPED where = at(position);
    DWORD written = 0;
    if (!WriteFile(m_file, data, size, &written, &where))
        return lastError();
    return written == size ? S_OK : STG_E_MEDIUMFULL;
}

HRESULT SinkFile::readAt(ULONGLONG position, void *data, ULONG size, ULONG &read)
{
    std::lock_guard<std::mutex> guard(m_lock);
    read = 0;
    HRESULT hr = openLocked();
    if (FAILED(hr))
        return hr;
    OVERLAPPED where = at(position);
    DWORD got = 0;
    if (!ReadFile(m_file, data, size, &got, &where) && GetLastError() != ERROR_HANDLE_EOF)
        return lastError();
    read = got;
    return S_OK;
}

HRESULT SinkFile::setSize(ULONGLONG size)
{
    std::lock_guard<std::mutex> guard(m_lock);
    HRESULT hr = openLocked();
    if (FAILED(hr))
        return hr;
    LARGE_INTEGER end;
    end.QuadPart = static_cast<LONGLONG>(size);
    if (!SetFilePointerEx(m_file, end, nullptr, FILE_BEGIN) || !SetEndOfFile(m_file))
        return lastError();
    return S_OK;
}

HRESULT SinkFile::size(ULONGLONG &size)
{
    std::lock_guard<std::mutex> guard(m_lock);
    HRESULT hr = openLocked();
    if (FAILED(hr))
        return hr;
    LARGE_INTEGER bytes;
    if (!GetFileSizeEx(m_file, &bytes))
        return lastError();
    size = static_cast<ULONGLONG>(bytes.QuadPart);
    return S_OK;
}

void SinkFile::close()
{
    std::lock_guard<std::mutex> guard(m_lock);
    closeLocked();
}

HRESULT SinkFile::openLocked()
{
    if (m_file != INVALID_HANDLE_VALUE)
        return S_OK;
    if (m_path.empty())
        return E_UNEXPECTED;
    m_file = CreateFileW(m_path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
    return m_file == INVALID_HANDLE_VALUE ? lastError() : S_OK;
}

void SinkFile::closeLocked()
{
    if (m_file == INVALID_HANDLE_VALUE)
        return;
    CloseHandle(m_file);
    m_file = INVALID_HANDLE_VALUE;
}

} // namespace lab
