// The process checks against real processes: a small program copied under the names of
// Windows Media Center and the FastAccess tray program.
#include "FrameworkTest.h"
#include "ProgramCopies.h"
#include "RunningProgram.h"

#include <CaptureUtil.h>
#include <gtest/gtest.h>
#include <windows.h>
#include <string>
#include <vector>

namespace {

using sorvane::CaptureUtil;

using sorvane::test::ProgramCopies;
using sorvane::test::RunningProgram;

class ProcessCheckTest : public sorvane::test::FrameworkTest {
protected:
    ProgramCopies copies;
};

const long kGeneralFailureHr = HRESULT_FROM_WIN32(ERROR_GEN_FAILURE);

TEST_F(ProcessCheckTest, NothingRunsUnderTheWatchedNames)
{
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"ehshell.exe")));
    EXPECT_FALSE(CaptureUtil::mediaCenterIsRunning());
    EXPECT_FALSE(CaptureUtil::fastAccessCheck(kGeneralFailureHr));
}

TEST_F(ProcessCheckTest, MediaCenterShellIsSeenWhileItRunsAndOnlyInLowerCase)
{
    RunningProgram shell(copies.copyAs(L"ehshell.exe"));
    ASSERT_TRUE(shell.started());
    EXPECT_TRUE(CaptureUtil::processIsRunning(kel::String(L"ehshell.exe")));
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"EHSHELL.EXE")));
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"ehshell")));
    EXPECT_TRUE(CaptureUtil::mediaCenterIsRunning());
    EXPECT_FALSE(CaptureUtil::fastAccessCheck(kGeneralFailureHr));

    ASSERT_TRUE(shell.end());
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"ehshell.exe")));
    EXPECT_FALSE(CaptureUtil::mediaCenterIsRunning());
}

TEST_F(ProcessCheckTest, MediaCenterRecorderAloneCountsAsMediaCenter)
{
    RunningProgram recorder(copies.copyAs(L"ehrec.exe"));
    ASSERT_TRUE(recorder.started());
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"ehshell.exe")));
    EXPECT_TRUE(CaptureUtil::mediaCenterIsRunning());

    ASSERT_TRUE(recorder.end());
    EXPECT_FALSE(CaptureUtil::mediaCenterIsRunning());
}

TEST_F(ProcessCheckTest, FastAccessCountsOnlyForCodesEndingInGeneralFailure)
{
    RunningProgram tray(copies.copyAs(L"fatraymon.exe"));
    ASSERT_TRUE(tray.started());
    EXPECT_TRUE(CaptureUtil::fastAccessCheck(kGeneralFailureHr));
    EXPECT_TRUE(CaptureUtil::fastAccessCheck(31));
    EXPECT_TRUE(CaptureUtil::fastAccessCheck(static_cast<long>(0x8004021F)));
    // Low byte 0x20: answered at once, whatever runs.
    EXPECT_FALSE(CaptureUtil::fastAccessCheck(HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION)));
    EXPECT_FALSE(CaptureUtil::mediaCenterIsRunning());

    ASSERT_TRUE(tray.end());
    EXPECT_FALSE(CaptureUtil::fastAccessCheck(kGeneralFailureHr));
}

} // namespace
