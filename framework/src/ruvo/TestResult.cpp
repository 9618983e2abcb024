#include <ruvo/TestResult.h>

namespace ruvo {

namespace {

const char *const kNames[TestResult::kCount] = {
    "PASS",      "FAIL",          "NOSIGNAL",    "NODEVICE",     "DEVICEBUSY",     "CANNOTRUN",
    "BADPARAMS", "MISCONFIGURED", "USERABORTED", "NOTSUPPORTED", "TESTNOTSTARTED",
};

} // namespace

TestResult::TestResult() : m_code(CODE_TESTNOTSTARTED) {}
TestResult::TestResult(Code code) : m_code(code) {}

TestResult TestResult::PASS()
{
    return TestResult(CODE_PASS);
}
TestResult TestResult::FAIL()
{
    return TestResult(CODE_FAIL);
}
TestResult TestResult::NOSIGNAL()
{
    return TestResult(CODE_NOSIGNAL);
}
TestResult TestResult::NODEVICE()
{
    return TestResult(CODE_NODEVICE);
}
TestResult TestResult::DEVICEBUSY()
{
    return TestResult(CODE_DEVICEBUSY);
}
TestResult TestResult::CANNOTRUN()
{
    return TestResult(CODE_CANNOTRUN);
}
TestResult TestResult::BADPARAMS()
{
    return TestResult(CODE_BADPARAMS);
}
TestResult TestResult::MISCONFIGURED()
{
    return TestResult(CODE_MISCONFIGURED);
}
TestResult TestResult::USERABORTED()
{
    return TestResult(CODE_USERABORTED);
}
TestResult TestResult::NOTSUPPORTED()
{
    return TestResult(CODE_NOTSUPPORTED);
}
TestResult TestResult::TESTNOTSTARTED()
{
    return TestResult(CODE_TESTNOTSTARTED);
}
TestResult TestResult::fromCode(Code code)
{
    return TestResult(code);
}

TestResult::Code TestResult::code() const
{
    return m_code;
}
RuvoString TestResult::toString() const
{
    return RuvoString(kNames[m_code]);
}
bool TestResult::operator==(const TestResult &other) const
{
    return m_code == other.m_code;
}
bool TestResult::operator!=(const TestResult &other) const
{
    return m_code != other.m_code;
}

} // namespace ruvo
