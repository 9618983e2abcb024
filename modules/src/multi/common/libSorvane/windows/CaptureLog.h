// The library's logging conventions. Each source file names its category once with
// SORVANE_LOG_CATEGORY; its logger is created on first use and cached in a file static.
// A message is composed only when admitted, and begins with its source line and a blank.
#pragma once

#include "CaptureException.h"
#include "ErrorHandler.h"
#include "ModuleRegistration.h"

#include <kel/LogFactory.h>
#include <kel/LoggerStream.h>
#include <kel/TraceLogger.h>

#define SORVANE_CAPTURE_CATEGORY "libSorvane.Capture"
#define SORVANE_UTIL_CATEGORY "libSorvane.CaptureUtil"

#define SORVANE_LOG_CATEGORY(category)                                                                                 \
    namespace {                                                                                                        \
    kel::Logger *s_sorvaneLogger = nullptr;                                                                            \
    inline kel::Logger *sorvaneLogger()                                                                                \
    {                                                                                                                  \
        if (!s_sorvaneLogger)                                                                                          \
            kel::LogFactory::createLogger(kel::String(category), s_sorvaneLogger);                                     \
        return s_sorvaneLogger;                                                                                        \
    }                                                                                                                  \
    }

#define SORVANE_LOG(priority, message)                                                                                 \
    do {                                                                                                               \
        kel::Logger *sorvaneLogger_ = sorvaneLogger();                                                                 \
        if (kel::LogFactory::admits(sorvaneLogger_, (priority))) {                                                     \
            kel::LoggerStream sorvaneStream_(sorvaneLogger_, (priority));                                              \
            sorvaneStream_ << __LINE__ << " " << message;                                                              \
        }                                                                                                              \
    } while (0)

// Progress and diagnostic detail.
#define SORVANE_LOG_DETAIL(message) SORVANE_LOG(kel::LOG_DETAIL, message)
// A failed system call.
#define SORVANE_LOG_ERROR(message) SORVANE_LOG(kel::LOG_ERROR, message)

// Logs entry and exit of the enclosing function.
#define SORVANE_TRACE() kel::TraceLogger sorvaneTrace_(sorvaneLogger(), __FUNCTION__, __FILE__, __LINE__)

// A line that log readers look for by its leading number: the number stays fixed wherever the
// statement moves in its file.
#define SORVANE_LOG_NUMBERED(priority, number, message)                                                                \
    do {                                                                                                               \
        kel::Logger *sorvaneLogger_ = sorvaneLogger();                                                                 \
        if (kel::LogFactory::admits(sorvaneLogger_, (priority))) {                                                     \
            kel::LoggerStream sorvaneStream_(sorvaneLogger_, (priority));                                              \
            sorvaneStream_ << (number) << " " << message;                                                              \
        }                                                                                                              \
    } while (0)

// A failure that ends the operation: its error line (`text` as it stands), then THROW_ERROR
// with `result`, `code` and `event`, both from the caller's line.
#define SORVANE_THROW_LOGGED(text, result, code, event)                                                                \
    do {                                                                                                               \
        SORVANE_LOG_ERROR(text);                                                                                       \
        THROW_ERROR((result), (code), (event));                                                                        \
    } while (0)

// The same with THROW_WARNING: the event is posted as a warning.
#define SORVANE_WARN_LOGGED(text, result, code, event)                                                                 \
    do {                                                                                                               \
        SORVANE_LOG_ERROR(text);                                                                                       \
        THROW_WARNING((result), (code), (event));                                                                      \
    } while (0)

// A failed call that ends the operation: its error line (`text` followed by the code's
// message), then THROW_ERROR with `result`, the code and `event`, both from the caller's line.
#define SORVANE_THROW_FAILED(text, hr, result, event)                                                                  \
    SORVANE_THROW_LOGGED(text << ::sorvane::ErrorHandler::errorMessageFromHr(hr), result, hr, event)

// The same with THROW_WARNING: the event is posted as a warning.
#define SORVANE_WARN_FAILED(text, hr, result, event)                                                                   \
    SORVANE_WARN_LOGGED(text << ::sorvane::ErrorHandler::errorMessageFromHr(hr), result, hr, event)

// A graph that cannot be built: FAIL with ErrorCreatingFilterGraph, after `text` and the
// failed call's message ...
#define SORVANE_GRAPH_FAILED(text, hr)                                                                                 \
    SORVANE_THROW_FAILED(text, hr, ::ruvo::TestResult::FAIL(), ::sorvane::g_errorCreatingFilterGraph)

// ... or after `text` alone, with no code, when no call failed with one.
#define SORVANE_GRAPH_REFUSED(text)                                                                                    \
    SORVANE_THROW_LOGGED(text, ::ruvo::TestResult::FAIL(), 0, ::sorvane::g_errorCreatingFilterGraph)
