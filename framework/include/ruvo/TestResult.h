#pragma once

#include <ruvo/RuvoString.h>

namespace ruvo {

class RUVO_API TestResult {
public:
    enum Code {
        CODE_PASS,
        CODE_FAIL,
        CODE_NOSIGNAL,
        CODE_NODEVICE,
        CODE_DEVICEBUSY,
        CODE_CANNOTRUN,
        CODE_BADPARAMS,
        CODE_MISCONFIGURED,
        CODE_USERABORTED,
        CODE_NOTSUPPORTED,
        CODE_TESTNOTSTARTED
    };
    static const int kCount = 11;

    static TestResult PASS();
    static TestResult FAIL();
    static TestResult NOSIGNAL();
    static TestResult NODEVICE();
    static TestResult DEVICEBUSY();
    static TestResult CANNOTRUN();
    static TestResult BADPARAMS();
    static TestResult MISCONFIGURED();
    static TestResult USERABORTED();
    static TestResult NOTSUPPORTED();
    static TestResult TESTNOTSTARTED();
    static TestResult fromCode(Code code);

    TestResult();
    Code code() const;
    RuvoString toString() const;
    bool operator==(const TestResult &other) const;
    bool operator!=(const TestResult &other) const;

private:
    explicit TestResult(Code code);
    Code m_code;
};

} // namespace ruvo
