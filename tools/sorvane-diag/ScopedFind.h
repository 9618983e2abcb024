// A FindFirstFile search handle, closed when the scope ends.
#pragma once

#include <windows.h>

#include <string>

namespace sorvane {
namespace diag {

class ScopedFind {
public:
    // The name of the first file matching `pattern` ("C:\x\frame-*.png"); empty when none.
    static std::wstring firstFile(const std::wstring &pattern);

    explicit ScopedFind(const std::wstring &pattern);
    ~ScopedFind();
    ScopedFind(const ScopedFind &) = delete;
    ScopedFind &operator=(const ScopedFind &) = delete;

    bool found() const { return m_handle != INVALID_HANDLE_VALUE; }
    const WIN32_FIND_DATAW &data() const { return m_data; }

private:
    HANDLE m_handle;
    WIN32_FIND_DATAW m_data;
};

} // namespace diag
} // namespace sorvane
