#pragma once

#include <kel/Export.h>
#include <functional>

namespace kel {

// Records a failed assertion. The caller raises structured exception 7 afterwards
// (KEL_ASSERT does both), so a debugger or crash handler sees where it happened.
class KEL_API AssertionFailure {
public:
    static const unsigned long kExceptionCode = 7;

    static void logAssert(const char *file, int line, const char *expression);
    static void raise();

    // Observers for hosts and tests; called after the assertion is logged.
    typedef std::function<void(const char *file, int line, const char *expression)> Listener;
    static void setListener(const Listener &listener);
};

} // namespace kel

#define KEL_ASSERT(expr)                                                                                               \
    do {                                                                                                               \
        if (!(expr)) {                                                                                                 \
            ::kel::AssertionFailure::logAssert(__FILE__, __LINE__, #expr);                                             \
            ::kel::AssertionFailure::raise();                                                                          \
        }                                                                                                              \
    } while (0)
