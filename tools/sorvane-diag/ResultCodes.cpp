#include "ResultCodes.h"

namespace sorvane {
namespace diag {

namespace {

struct ResultRow {
    ruvo::TestResult::Code code;
    int exitCode;
    const wchar_t *words;
};

const ResultRow kRows[] = {
    {ruvo::TestResult::CODE_PASS, 0, L"the test passed"},
    {ruvo::TestResult::CODE_FAIL, 10, L"the test failed"},
    {ruvo::TestResult::CODE_NOSIGNAL, 11, L"no signal was found"},
    {ruvo::TestResult::CODE_NODEVICE, 12, L"no suitable device was found"},
    {ruvo::TestResult::CODE_DEVICEBUSY, 13, L"the device is busy"},
    {ruvo::TestResult::CODE_CANNOTRUN, 14, L"the test could not run"},
    {ruvo::TestResult::CODE_BADPARAMS, 15, L"a parameter is invalid or out of range"},
    {ruvo::TestResult::CODE_MISCONFIGURED, 16, L"the system is misconfigured"},
    {ruvo::TestResult::CODE_USERABORTED, 17, L"the test was stopped by the user"},
    {ruvo::TestResult::CODE_NOTSUPPORTED, 18, L"the device does not support this test"},
    {ruvo::TestResult::CODE_TESTNOTSTARTED, 19, L"the test did not start"},
};

const ResultRow &rowOf(const ruvo::TestResult &result)
{
    for (const ResultRow &row : kRows) {
        if (row.code == result.code())
            return row;
    }
    return kRows[ruvo::TestResult::CODE_TESTNOTSTARTED];
}

std::wstring padded(std::wstring text, size_t width)
{
    if (text.size() < width)
        text.append(width - text.size(), L' ');
    return text;
}

} // namespace

int ResultCodes::exitCode(const ruvo::TestResult &result)
{
    return rowOf(result).exitCode;
}

std::wstring ResultCodes::words(const ruvo::TestResult &result)
{
    return rowOf(result).words;
}

std::wstring ResultCodes::name(const ruvo::TestResult &result)
{
    return result.toString().toKELString().wstr();
}

std::wstring ResultCodes::table()
{
    std::wstring text;
    for (const ResultRow &row : kRows) {
        const ruvo::TestResult result = ruvo::TestResult::fromCode(row.code);
        text += L"  " + padded(std::to_wstring(row.exitCode), 4) + padded(name(result), 16) + row.words + L"\n";
    }
    text += L"  " + padded(std::to_wstring(USAGE_ERROR), 20) + L"the command line is wrong (nothing was run)\n";
    text += L"  " + padded(std::to_wstring(HOST_ERROR), 20) +
            L"the host itself failed (a file could not be written, COM did not start)\n";
    text += L"  " + padded(std::to_wstring(FORCED_QUIT), 20) +
            L"quit at once by a second Ctrl+C (the test did not finish; --json still writes the report)\n";
    return text;
}

} // namespace diag
} // namespace sorvane
