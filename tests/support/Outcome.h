#pragma once

#include <CaptureException.h>

namespace sorvane {
namespace test {

// The failure an operation ends with; a PASS result when it returns normally.
template <class Operation>
CaptureException outcomeOf(Operation operation)
{
    try {
        operation();
    } catch (const CaptureException &e) {
        return e;
    }
    return CaptureException(ruvo::TestResult::PASS(), 0, nullptr, nullptr);
}

} // namespace test
} // namespace sorvane
