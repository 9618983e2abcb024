#pragma once

#include "SorvaneExport.h"

#include <kel/String.h>
#include <ruvo/Event.h>
#include <ruvo/TestResult.h>

namespace sorvane {

// The one failure the capture classes raise: the test result it means, the Windows code
// behind it and the events that tell the user why. Thrown by value, caught by reference.
class SORVANE_API CaptureException {
public:
    CaptureException(ruvo::TestResult result, long errorCode, ruvo::Event *errorEvent, ruvo::Event *warningEvent);
    CaptureException(const CaptureException &other);
    CaptureException &operator=(const CaptureException &other);
    ~CaptureException();

    ruvo::TestResult getResult() const;
    operator ruvo::TestResult() const;
    ruvo::Event *getErrorEvent() const;
    ruvo::Event *getWarningEvent() const;
    long getErrorCode() const;

    bool operator==(const ruvo::TestResult &result) const;
    bool operator!=(const ruvo::TestResult &result) const;

    // Posts the error event, then the warning event, each when present.
    void postEvents() const;
    kel::String toString() const;

    // Writes the throw site's line: "<line> THROW_ERROR from <file>:<line> : <text>".
    static void logThrow(const char *form, const char *file, int line, const CaptureException &exception);

private:
    ruvo::TestResult m_result;
    ruvo::Event *m_errorEvent;
    ruvo::Event *m_warningEvent;
    long m_errorCode;
};

} // namespace sorvane

// Raise a failure whose event is posted as an error.
#define THROW_ERROR(result, code, event)                                                                               \
    do {                                                                                                               \
        const ::sorvane::CaptureException sorvaneThrown_((result), (code), (event), nullptr);                          \
        ::sorvane::CaptureException::logThrow("THROW_ERROR from ", __FILE__, __LINE__, sorvaneThrown_);                \
        throw sorvaneThrown_;                                                                                          \
    } while (0)

// Raise a failure whose event is posted as a warning.
#define THROW_WARNING(result, code, event)                                                                             \
    do {                                                                                                               \
        const ::sorvane::CaptureException sorvaneThrown_((result), (code), nullptr, (event));                          \
        ::sorvane::CaptureException::logThrow("THROW_WARNING from ", __FILE__, __LINE__, sorvaneThrown_);              \
        throw sorvaneThrown_;                                                                                          \
    } while (0)
