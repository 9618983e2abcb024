// A test on the lab's devices. Whatever its outcome, at its end every lab object made during
// it is released, every lab streaming thread has ended and no capture window is left.
#pragma once

#include "FrameworkTest.h"
#include "WindowWatcher.h"

#include <lab/LabControl.h>

#include <objbase.h>

#include <gtest/gtest.h>

namespace sorvane {
namespace test {

// The window class of the library's capture windows.
const wchar_t kCaptureWindowClass[] = L"KEL_CaptureBase_Window";

class LabTest : public FrameworkTest {
protected:
    void SetUp() override
    {
        FrameworkTest::SetUp();
        m_liveObjectsBefore = lab::liveObjects();
    }

    void TearDown() override
    {
        EXPECT_EQ(lab::liveObjects(), m_liveObjectsBefore) << "lab objects left behind";
        EXPECT_EQ(lab::liveThreads(), 0) << "lab streaming threads still running";
        EXPECT_EQ(WindowWatcher::countInThisProcess(kCaptureWindowClass), 0) << "capture window left";
        FrameworkTest::TearDown();
    }

private:
    long m_liveObjectsBefore = 0;
};

// A lab test whose thread is in a single-threaded COM apartment for the test's length, for
// tests that call COM themselves (the library's capture classes enter one of their own).
class ComLabTest : public LabTest {
protected:
    void SetUp() override
    {
        LabTest::SetUp();
        ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
        m_comEntered = true;
    }

    void TearDown() override
    {
        LabTest::TearDown();
        if (m_comEntered)
            CoUninitialize();
        m_comEntered = false;
    }

private:
    bool m_comEntered = false;
};

} // namespace test
} // namespace sorvane
