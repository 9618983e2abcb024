#include <kel/TraceLogger.h>
#include <kel/LogFactory.h>
#include <kel/LoggerStream.h>

namespace kel {

TraceLogger::TraceLogger(Logger *logger, const char *function, const char *file, int line)
    : m_logger(logger), m_function(function)
{
    if (LogFactory::admits(m_logger, LOG_DETAIL)) {
        LoggerStream stream(m_logger, LOG_DETAIL);
        stream << "> " << function << " (" << file << ":" << line << ")";
    }
}

TraceLogger::~TraceLogger()
{
    if (LogFactory::admits(m_logger, LOG_DETAIL)) {
        LoggerStream stream(m_logger, LOG_DETAIL);
        stream << "< " << m_function;
    }
}

} // namespace kel
