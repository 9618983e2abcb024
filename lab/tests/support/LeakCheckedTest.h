// A lab test after which every lab object made during it is released and every lab streaming
// thread has ended, whatever its outcome. A fixture that holds graphs or filters releases them
// in its TearDown before calling this one's.
#pragma once

#include <lab/LabControl.h>

#include <gtest/gtest.h>

namespace labtest {

class LeakCheckedTest : public ::testing::Test {
protected:
    void SetUp() override { m_objectsBefore = lab::liveObjects(); }

    void TearDown() override
    {
        EXPECT_EQ(m_objectsBefore, lab::liveObjects());
        EXPECT_EQ(0, lab::liveThreads());
    }

private:
    long m_objectsBefore = 0;
};

} // namespace labtest
