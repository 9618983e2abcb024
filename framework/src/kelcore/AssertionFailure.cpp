#include <kel/AssertionFailure.h>
#include <kel/LogFactory.h>
#include <kel/LoggerStream.h>

#include <windows.h>

namespace kel {

namespace {

AssertionFailure::Listener &listener()
{
    static AssertionFailure::Listener instance;
    return instance;
}

} // namespace

void AssertionFailure::logAssert(const char *file, int line, const char *expression)
{
    static Logger *logger = nullptr;
    if (!logger)
        LogFactory::createLogger(String(L"kel.Assertion"), logger);
    {
        LoggerStream stream(logger, LOG_ERROR);
        stream << "Assertion failed: " << expression << " at " << file << ":" << line;
    }
    if (listener())
        listener()(file, line, expression);
}

void AssertionFailure::raise()
{
    RaiseException(kExceptionCode, 0, 0, nullptr);
}

void AssertionFailure::setListener(const Listener &newListener)
{
    listener() = newListener;
}

} // namespace kel
