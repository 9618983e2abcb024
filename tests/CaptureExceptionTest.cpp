// The failure type: its text, the order it posts its events in, and error-code texts.
#include "FrameworkTest.h"

#include <CaptureException.h>
#include <ErrorHandler.h>
#include <ModuleRegistration.h>
#include <windows.h>

namespace {

using sorvane::CaptureException;
using sorvane::ErrorHandler;
using sorvane::test::narrow;

class CaptureExceptionTest : public sorvane::test::FrameworkTest {};

bool endsWith(const std::string &text, const std::string &suffix)
{
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

TEST_F(CaptureExceptionTest, TextNamesResultEventsAndCodeOnlyWhenPresent)
{
    const CaptureException bare(ruvo::TestResult::NODEVICE(), 0, nullptr, nullptr);
    EXPECT_EQ(narrow(bare.toString()), "NODEVICE");

    const CaptureException full(ruvo::TestResult::FAIL(), E_OUTOFMEMORY, sorvane::g_errorCreatingFilterGraph,
                                sorvane::g_warningDeviceNotFound);
    const std::string text = narrow(full.toString());
    EXPECT_EQ(text.find("FAIL, error: The capture graph for the device could not be built., warning: "
                        "The capture device was not found., errorCode: SYS: "),
              0u)
        << text;
    EXPECT_TRUE(endsWith(text, " (hr=0x8007000E)")) << text;

    // A code the system has no message for is still printed.
    const CaptureException unknown(ruvo::TestResult::CANNOTRUN(), 0x2345678, nullptr, nullptr);
    EXPECT_EQ(narrow(unknown.toString()), "CANNOTRUN, errorCode:  (hr=0x02345678)");
}

TEST_F(CaptureExceptionTest, PostsErrorBeforeWarningFromTwoLinesAndNothingWhenEmpty)
{
    CaptureException(ruvo::TestResult::FAIL(), 0, nullptr, nullptr).postEvents();
    EXPECT_TRUE(recorder().events.empty());

    CaptureException(ruvo::TestResult::DEVICEBUSY(), 0, sorvane::g_errorDeviceInUse, sorvane::g_fastAccessRunning)
        .postEvents();
    ASSERT_EQ(recorder().events.size(), 2u);
    const ruvo::PostedEvent &error = recorder().events[0];
    const ruvo::PostedEvent &warning = recorder().events[1];
    EXPECT_EQ(error.severity, ruvo::PostedEvent::ERROR_EVENT);
    EXPECT_EQ(narrow(error.key), "ErrorDeviceInUse");
    EXPECT_EQ(warning.severity, ruvo::PostedEvent::WARNING_EVENT);
    EXPECT_EQ(narrow(warning.key), "FastAccessRunning");
    EXPECT_TRUE(endsWith(narrow(error.file), "CaptureException.cpp"));
    EXPECT_EQ(error.file, warning.file);
    EXPECT_GT(error.line, 0);
    EXPECT_NE(error.line, warning.line);

    recorder().events.clear();
    CaptureException(ruvo::TestResult::NOTSUPPORTED(), 0, nullptr, sorvane::g_warningDeviceNotFound).postEvents();
    ASSERT_EQ(recorder().events.size(), 1u);
    EXPECT_EQ(recorder().events[0].severity, ruvo::PostedEvent::WARNING_EVENT);
}

TEST_F(CaptureExceptionTest, ComparesAndConvertsByResultAndCopiesEveryField)
{
    const CaptureException original(ruvo::TestResult::USERABORTED(), 0x8007001F, sorvane::g_errorNoSignal,
                                    sorvane::g_userClickedFail);
    CaptureException copy(ruvo::TestResult::PASS(), 0, nullptr, nullptr);
    EXPECT_TRUE(copy == ruvo::TestResult::PASS());
    copy = original;
    EXPECT_TRUE(copy == ruvo::TestResult::USERABORTED());
    EXPECT_TRUE(copy != ruvo::TestResult::FAIL());
    EXPECT_EQ(static_cast<ruvo::TestResult>(copy), ruvo::TestResult::USERABORTED());
    EXPECT_EQ(copy.getErrorCode(), static_cast<long>(0x8007001F));
    EXPECT_EQ(copy.getErrorEvent(), sorvane::g_errorNoSignal);
    EXPECT_EQ(copy.getWarningEvent(), sorvane::g_userClickedFail);
}

TEST_F(CaptureExceptionTest, ThrowFormsLogTheirLineAndThrowByValue)
{
    int errorLine = 0;
    try {
        errorLine = __LINE__ + 1;
        THROW_ERROR(ruvo::TestResult::FAIL(), E_FAIL, sorvane::g_errorCreatingFilterGraph);
    } catch (const CaptureException &e) {
        EXPECT_EQ(e.getErrorEvent(), sorvane::g_errorCreatingFilterGraph);
        EXPECT_EQ(e.getWarningEvent(), nullptr);
        EXPECT_EQ(e.getErrorCode(), static_cast<long>(E_FAIL));
    }
    const std::string prefix = std::to_string(errorLine) + " THROW_ERROR from ";
    const auto errorLines = log().find(kel::String::fromUtf8(prefix));
    ASSERT_EQ(errorLines.size(), 1u);
    const std::string line = narrow(errorLines[0].message);
    EXPECT_EQ(narrow(errorLines[0].category), "libSorvane.Capture");
    EXPECT_EQ(errorLines[0].priority, kel::LOG_DETAIL);
    EXPECT_NE(line.find("CaptureExceptionTest.cpp:" + std::to_string(errorLine) + " : FAIL, error: "),
              std::string::npos)
        << line;

    try {
        THROW_WARNING(ruvo::TestResult::NODEVICE(), 0, sorvane::g_warningDeviceNotFound);
    } catch (const CaptureException &e) {
        EXPECT_EQ(e.getErrorEvent(), nullptr);
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_warningDeviceNotFound);
    }
    EXPECT_EQ(log().find(kel::String(L"THROW_WARNING from ")).size(), 1u);
}

TEST_F(CaptureExceptionTest, ThrowLineIsNotComposedWhenTheLogDoesNotAdmitDetail)
{
    kel::LogFactory::setPriority(kel::LOG_ERROR);
    try {
        THROW_ERROR(ruvo::TestResult::FAIL(), 0, nullptr);
    } catch (const CaptureException &) {
    }
    EXPECT_FALSE(log().contains(kel::String(L"THROW_ERROR")));
}

TEST(ErrorHandlerTest, KnownCodeGivesSystemTextAndUnknownOnlyTheCode)
{
    const std::string known = narrow(ErrorHandler::errorMessageFromHr(E_INVALIDARG));
    EXPECT_EQ(known.rfind("SYS: ", 0), 0u) << known;
    EXPECT_TRUE(endsWith(known, " (hr=0x80070057)")) << known;
    EXPECT_EQ(known.find('\n'), std::string::npos);
    EXPECT_EQ(known.find("  (hr"), std::string::npos) << "trailing line break not trimmed: " << known;

    EXPECT_EQ(narrow(ErrorHandler::errorMessageFromHr(0x0ABCDEF0)), " (hr=0x0ABCDEF0)");
}

} // namespace
