#include <kel/LogFactory.h>

#include <windows.h>

namespace kel {

Logger::Logger(const String &category) : m_category(category), m_priority(LOG_DETAIL) {}

const String &Logger::category() const
{
    return m_category;
}

int Logger::resolvePriority() const
{
    return static_cast<int>(m_priority);
}

void Logger::setPriority(int priority)
{
    InterlockedExchange(&m_priority, priority);
}

void Logger::log(int priority, const String &message)
{
    if (LogFactory::admits(this, priority))
        LogFactory::write(*this, priority, message);
}

} // namespace kel
