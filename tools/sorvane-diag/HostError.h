// A failure of the host itself (a file it cannot write, an image it cannot encode), as
// opposed to a test result the library reported.
#pragma once

#include <windows.h>

#include <string>

namespace sorvane {
namespace diag {

class HostError {
public:
    explicit HostError(const std::wstring &message) : m_message(message) {}
    // "<what> failed: 0x80070005 Access is denied."
    HostError(const std::wstring &what, HRESULT hr);

    const std::wstring &message() const { return m_message; }

    static std::wstring describe(HRESULT hr);

private:
    std::wstring m_message;
};

} // namespace diag
} // namespace sorvane
