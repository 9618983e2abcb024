// The file behind the file writer: opened on first use and closed when the writer stops or its
// writer commits, so a file is complete and readable once the graph has stopped, and a late
// writer (the multiplexer finishing its index after the writer stopped) simply reopens it.
#pragma once

#include <windows.h>
#include <mutex>
#include <string>

namespace lab {

class SinkFile {
public:
    SinkFile() = default;
    ~SinkFile();
    SinkFile(const SinkFile &) = delete;
    SinkFile &operator=(const SinkFile &) = delete;

    void setPath(const std::wstring &path);
    std::wstring path();

    HRESULT writeAt(ULONGLONG position, const void *data, ULONG size);
    HRESULT readAt(ULONGLONG position, void *data, ULONG size, ULONG &read);
    HRESULT setSize(ULONGLONG size);
    HRESULT size(ULONGLONG &size);
    void close();

private:
    HRESULT openLocked();
    void closeLocked();

    std::mutex m_lock;
    std::wstring m_path;
    HANDLE m_file = INVALID_HANDLE_VALUE;
};

} // namespace lab
