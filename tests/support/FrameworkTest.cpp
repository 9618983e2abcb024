#include "FrameworkTest.h"

namespace sorvane {
namespace test {

void FrameworkTest::SetUp()
{
    m_recorder.reset(new ruvo::RecordingBackend);
    ruvo::DiagModule::setBackend(m_recorder.get());
    ruvo::DiagModule::unsetAllParameters();
    m_log.reset(new LogCapture);
}

void FrameworkTest::TearDown()
{
    m_log.reset();
    ruvo::DiagModule::unsetAllParameters();
    ruvo::DiagModule::setBackend(nullptr);
    m_recorder.reset();
}

void FrameworkTest::setParameter(const char *key, const ruvo::Value &value)
{
    ruvo::Parameter *parameter = ruvo::DiagModule::findParameter(kel::String(key));
    ASSERT_NE(parameter, nullptr) << "no parameter " << key;
    ASSERT_TRUE(parameter->set(value)) << "wrong type for " << key;
}

std::vector<std::string> FrameworkTest::postedKeys() const
{
    std::vector<std::string> keys;
    for (const ruvo::PostedEvent &event : m_recorder->events)
        keys.push_back(narrow(event.key));
    return keys;
}

std::string narrow(const kel::String &text)
{
    return text.toUtf8();
}

} // namespace test
} // namespace sorvane

namespace kel {
void PrintTo(const String &text, std::ostream *out)
{
    *out << '"' << text.toUtf8() << '"';
}
} // namespace kel
