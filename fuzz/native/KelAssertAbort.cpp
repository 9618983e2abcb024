// The framework's assertion for native fuzz builds: a failed assertion is a finding, so it aborts.
#include <kel/AssertionFailure.h>

#include <cstdio>
#include <cstdlib>

namespace kel {

void AssertionFailure::logAssert(const char *file, int line, const char *expression)
{
    std::fprintf(stderr, "assertion failed: %s:%d: %s\n", file, line, expression);
}

void AssertionFailure::raise()
{
    std::abort();
}

} // namespace kel
