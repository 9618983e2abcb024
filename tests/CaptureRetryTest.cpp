// The retry loop, and failures thrown inside the library and caught here by reference.
#include "FrameworkTest.h"
#include "ManualClock.h"
#include "PlainCapture.h"
#include "AssertionCatcher.h"

#include <ModuleRegistration.h>
#include <boost/bind/bind.hpp>

namespace {

using ruvo::TestResult;
using sorvane::CaptureException;
using sorvane::test::captureDevice;
using sorvane::test::PlainCapture;

class CaptureRetryTest : public sorvane::test::FrameworkTest {
public:
    PlainCapture capture{
        captureDevice(kel::String(L"No Such Camera"), kel::String(L"None"), kel::String(L"USB\\VID_0000&PID_0000\\0")),
        kel::String(L"Retry test")};
    sorvane::test::ManualClock clock;
    int calls = 0;

    void failWith(const CaptureException &failure)
    {
        ++calls;
        throw failure;
    }
};

TEST_F(CaptureRetryTest, RecoverableFailureIsTriedElevenTimesHundredMillisecondsApartThenRethrown)
{
    const CaptureException failure(TestResult::FAIL(), E_FAIL, sorvane::g_errorCreatingFilterGraph, nullptr);
    try {
        capture.callMethodWithRetries(boost::bind(&CaptureRetryTest::failWith, this, failure));
        ADD_FAILURE() << "no exception";
    } catch (const CaptureException &e) {
        EXPECT_EQ(e.getResult(), TestResult::FAIL());
        EXPECT_EQ(e.getErrorCode(), static_cast<long>(E_FAIL));
    }
    EXPECT_EQ(calls, 11);
    EXPECT_EQ(clock.sleeps(), std::vector<uint32_t>(10, 100));
    EXPECT_TRUE(log().contains(kel::String(L"callMethodWithRetries, tryNum 10")));
    EXPECT_TRUE(log().contains(kel::String(L"callMethodWithRetries rethrows: FAIL")));
}

TEST_F(CaptureRetryTest, FinalResultsAbortedCodeAndUserFailAreNotRetried)
{
    const CaptureException finals[] = {
        CaptureException(TestResult::DEVICEBUSY(), 0, nullptr, sorvane::g_fastAccessRunning),
        CaptureException(TestResult::CANNOTRUN(), 0, nullptr, nullptr),
        CaptureException(TestResult::USERABORTED(), 0, nullptr, nullptr),
        CaptureException(TestResult::FAIL(), 995, nullptr, nullptr),
        CaptureException(TestResult::FAIL(), 0, sorvane::g_userClickedFail, nullptr),
    };
    for (const CaptureException &failure : finals) {
        SCOPED_TRACE(sorvane::test::narrow(failure.toString()));
        calls = 0;
        EXPECT_THROW(capture.callMethodWithRetries(boost::bind(&CaptureRetryTest::failWith, this, failure)),
                     CaptureException);
        EXPECT_EQ(calls, 1);
        EXPECT_FALSE(capture.isRecoverable(failure));
    }
    EXPECT_TRUE(clock.sleeps().empty());
    // The aborted-operation code counts only as the plain number, not as an HRESULT.
    EXPECT_TRUE(capture.isRecoverable(CaptureException(TestResult::FAIL(), HRESULT_FROM_WIN32(995), nullptr, nullptr)));
}

TEST_F(CaptureRetryTest, SuccessAfterFailuresReturnsNormally)
{
    int remainingFailures = 3;
    capture.callMethodWithRetries([&] {
        ++calls;
        if (remainingFailures-- > 0)
            THROW_ERROR(TestResult::FAIL(), E_FAIL, nullptr);
    });
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(clock.sleeps().size(), 3u);
}

TEST_F(CaptureRetryTest, OtherExceptionsPassThroughUntouched)
{
    EXPECT_THROW(capture.callMethodWithRetries([&] {
        ++calls;
        throw std::runtime_error("not ours");
    }),
                 std::runtime_error);
    EXPECT_EQ(calls, 1);
}

TEST_F(CaptureRetryTest, MissingDeviceFailsInsideTheLibraryAndIsCaughtHereByReference)
{
    try {
        capture.captureToScreen();
        ADD_FAILURE() << "no exception";
    } catch (const CaptureException &e) {
        EXPECT_EQ(e.getResult(), TestResult::NODEVICE());
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_warningDeviceNotFound);
        EXPECT_EQ(e.getErrorEvent(), nullptr);
        e.postEvents();
    }
    // Absent devices are retried like any recoverable failure.
    EXPECT_EQ(clock.sleeps().size(), 10u);
    ASSERT_EQ(recorder().events.size(), 1u);
    EXPECT_EQ(recorder().events[0].severity, ruvo::PostedEvent::WARNING_EVENT);
    EXPECT_EQ(capture.window(), nullptr);
    EXPECT_EQ(capture.graph(), nullptr);
}

TEST_F(CaptureRetryTest, ConstructingForADeviceWithoutVideoCaptureIsAnAssertion)
{
    sorvane::test::AssertionCatcher catcher;
    ruvo::DiagDevice audioOnly(kel::String(L"Mic"), kel::String(L"Mic"), kel::String(),
                               ruvo::DeviceCapability::AudioCapture());
    PlainCapture wrong(audioOnly, kel::String(L"x"));
    ASSERT_EQ(catcher.assertions().size(), 1u);
    EXPECT_EQ(catcher.assertions()[0].expression, "m_device.intersectCapability(DeviceCapability::VideoCapture())");
    EXPECT_EQ(catcher.raisedCount(), 1);
}

} // namespace
