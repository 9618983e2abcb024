#include "AssertionCatcher.h"

#include <kel/AssertionFailure.h>
#include <windows.h>

namespace sorvane {
namespace test {

namespace {

std::vector<AssertionCatcher::Assertion> g_assertions;
volatile long g_raised = 0;

LONG CALLBACK continuePastAssertion(EXCEPTION_POINTERS *info)
{
    if (info->ExceptionRecord->ExceptionCode != kel::AssertionFailure::kExceptionCode)
        return EXCEPTION_CONTINUE_SEARCH;
    InterlockedIncrement(&g_raised);
    return EXCEPTION_CONTINUE_EXECUTION;
}

} // namespace

AssertionCatcher::AssertionCatcher()
{
    g_assertions.clear();
    g_raised = 0;
    kel::AssertionFailure::setListener([](const char *file, int line, const char *expression) {
        g_assertions.push_back(Assertion{file, line, expression});
    });
    m_handler = AddVectoredExceptionHandler(1, continuePastAssertion);
}

AssertionCatcher::~AssertionCatcher()
{
    RemoveVectoredExceptionHandler(m_handler);
    kel::AssertionFailure::setListener(kel::AssertionFailure::Listener());
}

const std::vector<AssertionCatcher::Assertion> &AssertionCatcher::assertions() const
{
    return g_assertions;
}

int AssertionCatcher::raisedCount() const
{
    return static_cast<int>(g_raised);
}

} // namespace test
} // namespace sorvane
