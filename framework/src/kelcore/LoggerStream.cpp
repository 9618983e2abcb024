#include <kel/LoggerStream.h>
#include <kel/LogFactory.h>

namespace kel {

LoggerStream::LoggerStream(Logger *logger, int priority) : m_logger(logger), m_priority(priority) {}

LoggerStream::~LoggerStream()
{
    if (m_logger)
        m_logger->log(m_priority, m_message);
}

LoggerStream &LoggerStream::operator<<(const String &text)
{
    m_message += text;
    return *this;
}
LoggerStream &LoggerStream::operator<<(const Char16 *text)
{
    m_message += text ? text : L"(null)";
    return *this;
}
LoggerStream &LoggerStream::operator<<(const char *text)
{
    m_message += String(text ? text : "(null)");
    return *this;
}
LoggerStream &LoggerStream::operator<<(char c)
{
    m_message += static_cast<Char16>(static_cast<unsigned char>(c));
    return *this;
}
LoggerStream &LoggerStream::operator<<(bool value)
{
    m_message += String::fromBool(value);
    return *this;
}
LoggerStream &LoggerStream::operator<<(int value)
{
    m_message += String::fromInt(value);
    return *this;
}
LoggerStream &LoggerStream::operator<<(unsigned value)
{
    m_message += String::fromUInt(value);
    return *this;
}
LoggerStream &LoggerStream::operator<<(long value)
{
    m_message += String::fromInt(value);
    return *this;
}
LoggerStream &LoggerStream::operator<<(unsigned long value)
{
    m_message += String::fromUInt(value);
    return *this;
}
LoggerStream &LoggerStream::operator<<(long long value)
{
    m_message += String::fromInt(value);
    return *this;
}
LoggerStream &LoggerStream::operator<<(unsigned long long value)
{
    m_message += String::fromUInt(value);
    return *this;
}
LoggerStream &LoggerStream::operator<<(double value)
{
    m_message += String::fromDouble(value);
    return *this;
}

LoggerStream &LoggerStream::operator<<(const void *pointer)
{
    m_message += String(L"0x") + String::hex(static_cast<uint64_t>(reinterpret_cast<uintptr_t>(pointer)), true);
    return *this;
}

} // namespace kel
