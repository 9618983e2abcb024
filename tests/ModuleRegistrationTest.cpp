// The library's declarations as the framework saw them at load time.
#include "FrameworkTest.h"

#include <ModuleRegistration.h>
#include <ruvo/DiagModule.h>
#include <ruvo/MessageCatalog.h>

namespace {

using sorvane::test::narrow;

struct Expected {
    ruvo::Declaration::Kind kind;
    const char *key;
    ruvo::DataType::Type type;
    bool flagA;
    bool flagB;
};

const ruvo::Declaration::Kind EVENT = ruvo::Declaration::EVENT;
const ruvo::Declaration::Kind PARAMETER = ruvo::Declaration::PARAMETER;
const ruvo::Declaration::Kind STRING = ruvo::Declaration::LOCALIZED_STRING;
const ruvo::DataType::Type NONE = ruvo::DataType::NONE;
const ruvo::DataType::Type UINT32 = ruvo::DataType::UINT32;
const ruvo::DataType::Type BOOLEAN = ruvo::DataType::BOOLEAN;
const ruvo::DataType::Type DOUBLE = ruvo::DataType::DOUBLE;
const ruvo::DataType::Type TEXT = ruvo::DataType::STRING;

const Expected kDeclarations[] = {
    {EVENT, "BadParametersRange", NONE, false, false},
    {EVENT, "WarningWindowSetupProblem", NONE, false, false},
    {EVENT, "WarningDeviceNotFound", NONE, false, false},
    {EVENT, "WarningHardwareDoesNotSupportAnalogTVCapture", NONE, false, false},
    {EVENT, "WarningHardwareDoesNotSupportDigitalTVCapture", NONE, false, false},
    {EVENT, "ErrorCreatingFilterGraph", NONE, false, false},
    {EVENT, "ErrorRenderingVideoStream", NONE, false, false},
    {EVENT, "InfoSignalDetected", NONE, false, false},
    {EVENT, "MediaCenterIsRunning", NONE, false, false},
    {EVENT, "ErrorDeviceInUse", NONE, false, false},
    {EVENT, "FastAccessRunning", NONE, false, false},
    {EVENT, "ErrorCapturingFrames", NONE, false, false},
    {EVENT, "UserClickedFail", NONE, false, false},
    {EVENT, "ErrorNoSignal", NONE, false, false},
    {EVENT, "ErrorNoSignalWithTip", NONE, false, false},
    {EVENT, "CannotRunDVBTest", NONE, false, false},
    {EVENT, "SetCountryName", NONE, false, false},
    {PARAMETER, "TestRunTime", UINT32, false, true},
    {PARAMETER, "MsgBoxTimeout", UINT32, false, true},
    {PARAMETER, "CheckTVCable", BOOLEAN, false, true},
    {PARAMETER, "StopOnSignal", BOOLEAN, false, true},
    {PARAMETER, "ChecksPerChannel", UINT32, false, true},
    {PARAMETER, "SignalType", TEXT, false, true},
    {PARAMETER, "AskCountryCode1", BOOLEAN, false, true},
    {PARAMETER, "AskCountryCode2", BOOLEAN, false, true},
    {PARAMETER, "TouchscreenFactor", DOUBLE, true, false},
    {PARAMETER, "Interactive", BOOLEAN, false, true},
    {PARAMETER, "TVStartChannel", UINT32, false, true},
    {PARAMETER, "TVEndChannel", UINT32, false, true},
    {PARAMETER, "FMRadioStartChannel", DOUBLE, false, true},
    {PARAMETER, "FMRadioEndChannel", DOUBLE, false, true},
    {PARAMETER, "DigitalStartChannel", UINT32, false, true},
    {PARAMETER, "DigitalEndChannel", UINT32, false, true},
    {PARAMETER, "Country", TEXT, false, true},
    {PARAMETER, "UseMinorChannelTechnique", BOOLEAN, false, true},
    {PARAMETER, "CaptureDelay", UINT32, false, true},
    {STRING, "DefaultName", NONE, false, false},
    {STRING, "CheckCableConnectedTitle", NONE, false, false},
    {STRING, "CheckCableConnectedMessage", NONE, false, false},
    {STRING, "PleaseSelectCountry", NONE, false, false},
    {STRING, "OKButton", NONE, false, false},
    {STRING, "TestingChannel", NONE, false, false},
    {STRING, "DidTestPass", NONE, false, false},
    {STRING, "Pass", NONE, false, false},
    {STRING, "Fail", NONE, false, false},
};

class ModuleRegistrationTest : public sorvane::test::FrameworkTest {};

TEST_F(ModuleRegistrationTest, DeclaresEverythingAtLoadInOrderWithTypesAndFlags)
{
    const kel::Array<ruvo::Declaration> declared = ruvo::DiagModule::declarations();
    const int expectedCount = static_cast<int>(sizeof(kDeclarations) / sizeof(kDeclarations[0]));
    ASSERT_EQ(declared.size(), expectedCount);
    for (int i = 0; i < expectedCount; ++i) {
        SCOPED_TRACE(kDeclarations[i].key);
        EXPECT_EQ(declared[i].kind, kDeclarations[i].kind);
        EXPECT_EQ(narrow(declared[i].key), kDeclarations[i].key);
        EXPECT_EQ(declared[i].type, kDeclarations[i].type);
        EXPECT_EQ(declared[i].flagA, kDeclarations[i].flagA);
        EXPECT_EQ(declared[i].flagB, kDeclarations[i].flagB);
        EXPECT_TRUE(declared[i].description.isEmpty());
    }
}

TEST_F(ModuleRegistrationTest, GlobalsPointAtTheFrameworkObjectsOfTheirKeys)
{
    // The two globals whose names differ from their keys.
    EXPECT_EQ(sorvane::g_warnHardwareDoesNotSupportAnalogTVInput,
              ruvo::DiagModule::findEvent(kel::String(L"WarningHardwareDoesNotSupportAnalogTVCapture")));
    EXPECT_EQ(sorvane::g_errorCannotRunDVBTest, ruvo::DiagModule::findEvent(kel::String(L"CannotRunDVBTest")));
    EXPECT_EQ(sorvane::g_TVStartChannel, ruvo::DiagModule::findParameter(kel::String(L"TVStartChannel")));
    EXPECT_EQ(sorvane::g_captureDelay, ruvo::DiagModule::findParameter(kel::String(L"CaptureDelay")));
    EXPECT_EQ(sorvane::g_OKButton, ruvo::DiagModule::findLocalizedString(kel::String(L"OKButton")));
    EXPECT_EQ(sorvane::g_fail, ruvo::DiagModule::findLocalizedString(kel::String(L"Fail")));
    EXPECT_FALSE(sorvane::g_testRunTime->isset());
}

TEST_F(ModuleRegistrationTest, InitRegistersTheLibraryByName)
{
    sorvane::init();
    ASSERT_EQ(recorder().libraries.size(), 1u);
    EXPECT_EQ(narrow(recorder().libraries[0]), "libSorvane");
}

TEST_F(ModuleRegistrationTest, EveryKeyReadsAsASentence)
{
    for (const Expected &entry : kDeclarations) {
        if (entry.kind == PARAMETER)
            continue;
        SCOPED_TRACE(entry.key);
        EXPECT_TRUE(ruvo::MessageCatalog::has(kel::String(entry.key)));
    }
    sorvane::g_errorNoSignalWithTip->setVariable("startchannel", 2u).setVariable("endchannel", 69u);
    EXPECT_EQ(narrow(sorvane::g_errorNoSignalWithTip->localizedMessage().toKELString()),
              "No signal was found on channels 2 to 69. Check that the antenna or cable is connected.");
}

} // namespace
