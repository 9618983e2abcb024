// How the host reports a framework test result: the exit status and the result in words.
#pragma once

#include <ruvo/TestResult.h>

#include <string>

namespace sorvane {
namespace diag {

class ResultCodes {
public:
    // Exit statuses that are not test results. A crash under Wine exits 1 or 5, so the
    // results start at 10 and can never be mistaken for one.
    static const int USAGE_ERROR = 2;
    static const int HOST_ERROR = 3;
    // A second Ctrl+C ended the program before the test did.
    static const int FORCED_QUIT = 4;

    static int exitCode(const ruvo::TestResult &result);
    // "the test passed", "no signal was found" ...
    static std::wstring words(const ruvo::TestResult &result);
    static std::wstring name(const ruvo::TestResult &result);
    // The table printed by --help: every exit status and what it means.
    static std::wstring table();
};

} // namespace diag
} // namespace sorvane
