// The reference framework's module API as the host and tests use it.
#include "FrameworkTest.h"

#include <ruvo/DiagDevice.h>
#include <ruvo/DiagModule.h>

#include <limits>

namespace {

using kel::String;
using sorvane::test::narrow;

// This program declares its own objects, as a module would at load time.
ruvo::Parameter *const g_runTime =
    ruvo::DiagModule::createParameter("TestRunTime", ruvo::DataType::UINT32, "", false, true);
ruvo::Event *const g_range = ruvo::DiagModule::createEvent("BadParametersRange");
ruvo::LocalizedString *const g_testing = ruvo::DiagModule::createLocalizedString("TestingChannel");

class RuvoTest : public sorvane::test::FrameworkTest {};

TEST_F(RuvoTest, ParametersAcceptOnlyValuesOfTheirDeclaredType)
{
    ruvo::Parameter *runTime = ruvo::DiagModule::findParameter(String(L"TestRunTime"));
    ASSERT_EQ(runTime, g_runTime);
    EXPECT_FALSE(runTime->set(ruvo::Value::fromBool(true)));
    EXPECT_FALSE(runTime->isset());

    ruvo::Value parsed;
    EXPECT_FALSE(ruvo::Value::parse(ruvo::DataType::UINT32, String(L"-3"), parsed));
    EXPECT_FALSE(ruvo::Value::parse(ruvo::DataType::UINT32, String(L"4294967296"), parsed));
    ASSERT_TRUE(ruvo::Value::parse(ruvo::DataType::UINT32, String(L"5"), parsed));
    EXPECT_TRUE(runTime->set(parsed));
    EXPECT_EQ(runTime->value().valueUint32(), 5u);

    EXPECT_TRUE(ruvo::Value::parse(ruvo::DataType::BOOLEAN, String(L"False"), parsed));
    EXPECT_FALSE(parsed.valueBool());
    EXPECT_FALSE(ruvo::Value::parse(ruvo::DataType::BOOLEAN, String(L"maybe"), parsed));
}

TEST_F(RuvoTest, NumbersAreDecimalAndFinite)
{
    struct Case {
        ruvo::DataType::Type type;
        const wchar_t *text;
        bool accepted;
        double value;
    };
    const ruvo::DataType::Type whole = ruvo::DataType::UINT32;
    const ruvo::DataType::Type number = ruvo::DataType::DOUBLE;
    for (const Case &c : {Case{whole, L"010", true, 10},
                          Case{whole, L" 7 ", true, 7},
                          Case{whole, L"4294967295", true, 4294967295.0},
                          Case{whole, L"0x3", false, 0},
                          Case{whole, L"+5", false, 0},
                          Case{whole, L"1e3", false, 0},
                          Case{whole, L"", false, 0},
                          Case{whole, L"99999999999999999999999", false, 0},
                          Case{whole, L"3.0", false, 0},
                          Case{number, L"88.1", true, 88.1},
                          Case{number, L"-2.5", true, -2.5},
                          Case{number, L"1e2", true, 100},
                          Case{number, L"010", true, 10},
                          Case{number, L"nan", false, 0},
                          Case{number, L"NaN", false, 0},
                          Case{number, L"inf", false, 0},
                          Case{number, L"-Infinity", false, 0},
                          Case{number, L"1e999", false, 0},
                          Case{number, L"0x1p3", false, 0},
                          Case{number, L"nan(1)", false, 0},
                          Case{number, L"", false, 0}}) {
        SCOPED_TRACE(narrow(String(c.text)));
        ruvo::Value parsed;
        EXPECT_EQ(ruvo::Value::parse(c.type, String(c.text), parsed), c.accepted);
        if (c.accepted) {
            EXPECT_EQ(parsed.type(), c.type);
            EXPECT_DOUBLE_EQ(c.type == whole ? parsed.valueUint32() : parsed.valueDouble(), c.value);
        } else {
            EXPECT_TRUE(parsed.isEmpty());
        }
    }
    double read = 0;
    EXPECT_FALSE(String(L"nan").toDouble(read));
    EXPECT_FALSE(String(L"inf").toDouble(read));
}

TEST_F(RuvoTest, ANumberReadAsAWholeNumberTakesTheNearestEnd)
{
    EXPECT_EQ(ruvo::Value::fromDouble(std::numeric_limits<double>::quiet_NaN()).valueUint32(), 0u);
    EXPECT_EQ(ruvo::Value::fromDouble(-5.0).valueUint32(), 0u);
    EXPECT_EQ(ruvo::Value::fromDouble(1e300).valueUint32(), 4294967295u);
    EXPECT_EQ(ruvo::Value::fromDouble(4294967296.0).valueUint32(), 4294967295u);
    EXPECT_EQ(ruvo::Value::fromDouble(60.9).valueUint32(), 60u);
    EXPECT_EQ(ruvo::Value(String(L"0x10")).valueUint32(), 0u);
    EXPECT_EQ(ruvo::Value(String(L"nan")).valueDouble(), 0.0);
    // Written out in full, the largest double is still a number.
    EXPECT_EQ(String::fromDouble(1e300, 1).length(), 303);
}

TEST_F(RuvoTest, PostedEventsKeepTheirVariablesAsTheyWereWhenPosted)
{
    ruvo::Event *event = g_range;
    event->setVariable("ParameterName", "TVStartChannel")
        .setVariable("ParameterValue", 1u)
        .setVariable("RangeMin", 2u)
        .setVariable("RangeMax", 69u);
    ruvo::DiagModule::error(event, "here.cpp", 12);
    event->setVariable("ParameterValue", 99u);

    ASSERT_EQ(recorder().events.size(), 1u);
    const ruvo::PostedEvent &posted = recorder().events[0];
    EXPECT_EQ(narrow(posted.message),
              "The parameter TVStartChannel has the value 1, outside the allowed range 2 to 69.");
    EXPECT_EQ(posted.variables.size(), 4);
    EXPECT_EQ(narrow(posted.variables.nameAt(3)), "RangeMax");
    EXPECT_EQ(posted.line, 12);
}

TEST_F(RuvoTest, MessageBoxesFollowTheScriptAndThePromptSetting)
{
    ruvo::MessageBox2 *box = ruvo::DiagModule::createMessageBox2("Title", "Text", 0, 1, 0, true);
    EXPECT_FALSE(box->display()) << "prompts are off by default";

    recorder().setPromptEnabled(true);
    recorder().queueAnswer(6);
    recorder().queueAnswer(0, true, false);
    EXPECT_TRUE(box->display());
    EXPECT_TRUE(box->wait(30000));
    EXPECT_EQ(box->getReturn(), 6);
    EXPECT_TRUE(box->display());
    EXPECT_FALSE(box->wait(1000));
    // With prompts off the box never reached the host.
    ASSERT_EQ(recorder().prompts.size(), 2u);
    EXPECT_EQ(recorder().prompts[0].waitMilliseconds, 30000u);
    EXPECT_EQ(recorder().prompts[0].options, 1);
}

TEST_F(RuvoTest, StopRequestsAndProgressReachTheBackend)
{
    recorder().requestStopAtCheck(3);
    EXPECT_FALSE(ruvo::DiagModule::checkForStop());
    EXPECT_FALSE(ruvo::DiagModule::checkForStop());
    EXPECT_TRUE(ruvo::DiagModule::checkForStop());

    ruvo::LocalizedString *testing = g_testing;
    testing->setVariable("channel", String(L"7"));
    ruvo::DiagModule::progress(testing);
    ruvo::DiagModule::percentDone(50);
    ASSERT_EQ(recorder().progressTexts.size(), 1u);
    EXPECT_EQ(narrow(recorder().progressTexts[0]), "Testing channel 7");
    EXPECT_EQ(recorder().percents, std::vector<int>{50});
}

TEST(RuvoDeviceTest, CapabilitiesIntersectAndPropertiesAreKept)
{
    ruvo::DiagDevice tuner(String(L"TV Card"), String(L"Analog TV"), String(L"PCI\\VEN_14F1"),
                           ruvo::DeviceCapability::VideoCapture() | ruvo::DeviceCapability::AnalogTVTuner());
    EXPECT_TRUE(tuner.intersectCapability(ruvo::DeviceCapability::VideoCapture()));
    EXPECT_TRUE(tuner.deviceCapabilities().isCapable(ruvo::DeviceCapability::AnalogTVTuner()));
    EXPECT_FALSE(tuner.deviceCapabilities().isCapable(ruvo::DeviceCapability::DigitalTVTuner()));
    EXPECT_TRUE(tuner.property("AnalogFriendlyName").isEmpty());
    tuner.setProperty("AnalogFriendlyName", ruvo::Value(String(L"Lab TV")));
    EXPECT_EQ(narrow(tuner.property("AnalogFriendlyName").toKELString()), "Lab TV");
}

} // namespace
