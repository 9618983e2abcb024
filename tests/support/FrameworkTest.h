#pragma once

#include "LogCapture.h"

#include <gtest/gtest.h>
#include <ruvo/DiagModule.h>
#include <ruvo/RecordingBackend.h>
#include <memory>
#include <string>

namespace sorvane {
namespace test {

// A test fixture with a fresh recording backend, every parameter unset and the log captured.
class FrameworkTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    ruvo::RecordingBackend &recorder() { return *m_recorder; }
    LogCapture &log() { return *m_log; }
    // Sets a declared parameter; fails the test when the key or the type is wrong.
    void setParameter(const char *key, const ruvo::Value &value);

    // Keys of the posted events, in order.
    std::vector<std::string> postedKeys() const;

private:
    std::unique_ptr<ruvo::RecordingBackend> m_recorder;
    std::unique_ptr<LogCapture> m_log;
};

std::string narrow(const kel::String &text);

} // namespace test
} // namespace sorvane

// gtest prints kel::String as UTF-8.
namespace kel {
void PrintTo(const String &text, std::ostream *out);
}
