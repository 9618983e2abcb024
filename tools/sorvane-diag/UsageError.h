// A command line the host cannot run: the message says what is wrong, the exit status
// says how (a usage error, or BADPARAMS for a parameter that does not fit its key).
#pragma once

#include "ResultCodes.h"

#include <string>

namespace sorvane {
namespace diag {

class UsageError {
public:
    explicit UsageError(const std::wstring &message, int exitCode = ResultCodes::USAGE_ERROR)
        : m_message(message), m_exitCode(exitCode)
    {
    }

    const std::wstring &message() const { return m_message; }
    int exitCode() const { return m_exitCode; }

private:
    std::wstring m_message;
    int m_exitCode;
};

} // namespace diag
} // namespace sorvane
