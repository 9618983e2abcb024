#pragma once

#include <kel/LogPriority.h>
#include <kel/String.h>

namespace kel {

// One log category. Obtained from LogFactory::createLogger and owned by the factory.
class KEL_API Logger {
public:
    explicit Logger(const String &category);

    const String &category() const;
    // The logger's own threshold; LOG_DETAIL until a host narrows it.
    int resolvePriority() const;
    void setPriority(int priority);
    void log(int priority, const String &message);

private:
    String m_category;
    volatile long m_priority;
};

} // namespace kel
