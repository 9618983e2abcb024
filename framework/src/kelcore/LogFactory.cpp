#include <kel/LogFactory.h>
#include <kel/mutex.h>

#include <windows.h>
#include <cstdio>
#include <map>
#include <memory>

namespace kel {

namespace {

struct LogState {
    mutex lock;
    std::map<std::wstring, std::unique_ptr<Logger>> loggers;
    volatile long priority = LOG_WARNING;
    String file;
    int filePriority = LOG_DETAIL;
    LogFactory::Sink sink;
};

LogState &state()
{
    static LogState instance;
    return instance;
}

const wchar_t *priorityName(int priority)
{
    switch (priority) {
    case LOG_DETAIL:
        return L"DETAIL";
    case LOG_INFO:
        return L"INFO";
    case LOG_WARNING:
        return L"WARNING";
    case LOG_ERROR:
        return L"ERROR";
    default:
        return L"?";
    }
}

void appendToFile(const String &path, const String &line)
{
    FILE *file = _wfopen(path.c_str(), L"ab");
    if (!file)
        return;
    const std::string utf8 = line.toUtf8();
    fwrite(utf8.data(), 1, utf8.size(), file);
    fclose(file);
}

} // namespace

void LogFactory::createLogger(const String &category, Logger *&logger)
{
    LogState &s = state();
    mutex::scoped_lock guard(s.lock);
    std::unique_ptr<Logger> &slot = s.loggers[category.wstr()];
    if (!slot)
        slot.reset(new Logger(category));
    logger = slot.get();
}

int LogFactory::getPriority()
{
    return static_cast<int>(state().priority);
}

void LogFactory::setPriority(int priority)
{
    InterlockedExchange(&state().priority, priority);
}

bool LogFactory::admits(const Logger *logger, int priority)
{
    return logger && priority >= getPriority() && priority >= logger->resolvePriority();
}

void LogFactory::setLogFile(const String &path)
{
    LogState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.file = path;
}

void LogFactory::setLogFilePriority(int priority)
{
    LogState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.filePriority = priority;
}

void LogFactory::setSink(const Sink &sink)
{
    LogState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.sink = sink;
}

void LogFactory::write(const Logger &logger, int priority, const String &message)
{
    LogState &s = state();
    mutex::scoped_lock guard(s.lock);
    if (s.sink)
        s.sink(logger.category(), priority, message);
    if (s.file.isEmpty() || priority < s.filePriority)
        return;

    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t stamp[64];
    swprintf(stamp, 64, L"%04u-%02u-%02u %02u:%02u:%02u.%03u [%lu] ", now.wYear, now.wMonth, now.wDay, now.wHour,
             now.wMinute, now.wSecond, now.wMilliseconds, GetCurrentThreadId());
    String line(stamp);
    line += String(priorityName(priority)) + L" " + logger.category() + L": " + message + L"\r\n";
    appendToFile(s.file, line);
}

} // namespace kel
