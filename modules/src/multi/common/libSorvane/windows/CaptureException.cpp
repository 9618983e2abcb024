#include "CaptureException.h"

#include "CaptureLog.h"
#include "ErrorHandler.h"

#include <ruvo/DiagModule.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

CaptureException::CaptureException(ruvo::TestResult result, long errorCode, ruvo::Event *errorEvent,
                                   ruvo::Event *warningEvent)
    : m_result(result), m_errorEvent(errorEvent), m_warningEvent(warningEvent), m_errorCode(errorCode)
{
}

CaptureException::CaptureException(const CaptureException &other)
    : m_result(other.m_result), m_errorEvent(other.m_errorEvent), m_warningEvent(other.m_warningEvent),
      m_errorCode(other.m_errorCode)
{
}

CaptureException &CaptureException::operator=(const CaptureException &other)
{
    m_result = other.m_result;
    m_errorEvent = other.m_errorEvent;
    m_warningEvent = other.m_warningEvent;
    m_errorCode = other.m_errorCode;
    return *this;
}

CaptureException::~CaptureException() {}

ruvo::TestResult CaptureException::getResult() const
{
    return m_result;
}
CaptureException::operator ruvo::TestResult() const
{
    return m_result;
}
ruvo::Event *CaptureException::getErrorEvent() const
{
    return m_errorEvent;
}
ruvo::Event *CaptureException::getWarningEvent() const
{
    return m_warningEvent;
}
long CaptureException::getErrorCode() const
{
    return m_errorCode;
}

bool CaptureException::operator==(const ruvo::TestResult &result) const
{
    return m_result == result;
}
bool CaptureException::operator!=(const ruvo::TestResult &result) const
{
    return m_result != result;
}

void CaptureException::postEvents() const
{
    if (m_errorEvent)
        ruvo::DiagModule::error(m_errorEvent, __FILE__, __LINE__);
    if (m_warningEvent)
        ruvo::DiagModule::warning(m_warningEvent, __FILE__, __LINE__);
}

kel::String CaptureException::toString() const
{
    kel::String text = m_result.toString().toKELString();
    if (m_errorEvent)
        text += kel::String(L", error: ") + m_errorEvent->localizedMessage().toKELString();
    if (m_warningEvent)
        text += kel::String(L", warning: ") + m_warningEvent->localizedMessage().toKELString();
    if (m_errorCode != 0)
        text += kel::String(L", errorCode: ") + ErrorHandler::errorMessageFromHr(m_errorCode);
    return text;
}

void CaptureException::logThrow(const char *form, const char *file, int line, const CaptureException &exception)
{
    kel::Logger *logger = sorvaneLogger();
    if (!kel::LogFactory::admits(logger, kel::LOG_DETAIL))
        return;
    kel::LoggerStream stream(logger, kel::LOG_DETAIL);
    stream << line << " " << form << file << ":" << line << " : " << exception.toString();
}

} // namespace sorvane
