#pragma once

#include <kel/Logger.h>
#include <functional>

namespace kel {

class KEL_API LogFactory {
public:
    // Sets `logger` to the one logger of `category`, creating it on first use.
    static void createLogger(const String &category, Logger *&logger);

    // The factory-wide threshold (LOG_WARNING by default).
    static int getPriority();
    static void setPriority(int priority);

    // True when a message of `priority` would be written through `logger`.
    static bool admits(const Logger *logger, int priority);

    // Where written lines go: a file (appended, one line each) and an observer. The file may
    // keep fewer lines than the observer sees: only those at or above its own priority
    // (LOG_DETAIL, every admitted line, unless set).
    static void setLogFile(const String &path);
    static void setLogFilePriority(int priority);
    typedef std::function<void(const String &category, int priority, const String &message)> Sink;
    static void setSink(const Sink &sink);

    static void write(const Logger &logger, int priority, const String &message);
};

} // namespace kel
