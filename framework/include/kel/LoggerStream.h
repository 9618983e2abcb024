#pragma once

#include <kel/Logger.h>
#include <cstdint>

namespace kel {

// Composes one message and writes it when the stream goes out of scope.
class KEL_API LoggerStream {
public:
    LoggerStream(Logger *logger, int priority);
    ~LoggerStream();
    LoggerStream(const LoggerStream &) = delete;
    LoggerStream &operator=(const LoggerStream &) = delete;

    LoggerStream &operator<<(const String &text);
    LoggerStream &operator<<(const Char16 *text);
    LoggerStream &operator<<(const char *text);
    LoggerStream &operator<<(char c);
    LoggerStream &operator<<(bool value);
    LoggerStream &operator<<(int value);
    LoggerStream &operator<<(unsigned value);
    LoggerStream &operator<<(long value);
    LoggerStream &operator<<(unsigned long value);
    LoggerStream &operator<<(long long value);
    LoggerStream &operator<<(unsigned long long value);
    LoggerStream &operator<<(double value);
    // Pointers and handles print as 0x followed by sixteen hexadecimal digits.
    LoggerStream &operator<<(const void *pointer);

private:
    Logger *m_logger;
    int m_priority;
    String m_message;
};

} // namespace kel
