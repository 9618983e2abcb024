#pragma once

#include <kel/Logger.h>

namespace kel {

// Logs entry on construction and exit on destruction, at detail priority.
class KEL_API TraceLogger {
public:
    TraceLogger(Logger *logger, const char *function, const char *file, int line);
    ~TraceLogger();
    TraceLogger(const TraceLogger &) = delete;
    TraceLogger &operator=(const TraceLogger &) = delete;

private:
    Logger *m_logger;
    const char *m_function;
};

} // namespace kel
