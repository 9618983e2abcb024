// The digital tuners without a BDA device: what they refuse before building anything, and
// how the DVB-T tuner chooses its country and recognises DTMB devices.
#include "CountryDialogDriver.h"
#include "FrameworkTest.h"
#include "ManualClock.h"
#include "Outcome.h"

#include <ATSCTuner.h>
#include <ClearQAMTuner.h>
#include <DVBTuner.h>
#include <ModuleRegistration.h>
#include <OcurTuner.h>
#include <gtest/gtest.h>
#include <ruvo/DeviceCapability.h>
#include <functional>
#include <vector>

namespace {

using ruvo::DeviceCapability;
using ruvo::TestResult;
using sorvane::CaptureException;
using sorvane::test::outcomeOf;

ruvo::DiagDevice device(const wchar_t *name, const DeviceCapability &capabilities)
{
    return ruvo::DiagDevice(kel::String(name), kel::String(L"a test device"),
                            kel::String(L"PCI\\VEN_1234&DEV_5678\\4&1&0&00E0"), capabilities);
}

// Reaches the DVB-T tuner's country choice and DTMB test without a graph.
class DVBTProbe : public sorvane::DVBTuner {
public:
    explicit DVBTProbe(const ruvo::DiagDevice &record) : DVBTuner(record, kel::String(L"DVB-T probe")) {}
    int country() { return askForCountry(); }
    bool isDTMBName(const wchar_t *name) { return containsDTMB(kel::String(name)); }
    void supports(const std::vector<int> &codes)
    {
        for (int code : codes)
            m_supportedCountryCodes.add(code);
    }
};

class DigitalTunerTest : public sorvane::test::FrameworkTest {
protected:
    sorvane::test::ManualClock clock;
};

TEST_F(DigitalTunerTest, DeviceWithoutTheDigitalCapabilityIsNotSupportedBeforeAnyFilterIsMade)
{
    const ruvo::DiagDevice analog =
        device(L"Analog only", DeviceCapability::VideoCapture() | DeviceCapability::AnalogTVTuner());
    const kel::String title(L"Digital test");
    const std::vector<std::function<void()>> checks = {
        [&] { sorvane::ClearQAMTuner(analog, title).checkTVSignal(); },
        [&] { sorvane::ATSCTuner(analog, title).checkTVSignal(); },
        [&] { sorvane::OcurTuner(analog, title).checkTVSignal(); },
        [&] { sorvane::DVBTuner(analog, title).checkTVSignal(); },
    };
    for (const std::function<void()> &check : checks) {
        const CaptureException e = outcomeOf(check);
        EXPECT_EQ(e.getResult(), TestResult::NOTSUPPORTED());
        EXPECT_EQ(e.getErrorEvent(), nullptr);
        EXPECT_EQ(e.getWarningEvent(), sorvane::g_warnHardwareDoesNotSupportDigitalTVInput);
    }
    EXPECT_TRUE(log().contains(L"THROW_WARNING from "));
    EXPECT_FALSE(log().contains(L"add filter"));
    EXPECT_FALSE(log().contains(L"Creating Network Provider"));
}

TEST_F(DigitalTunerTest, CountryParameterNamesTheCountryInAnyCase)
{
    DVBTProbe tuner(device(L"Lab DVB-T", DeviceCapability::VideoCapture() | DeviceCapability::DigitalTVTuner()));
    setParameter("Country", ruvo::Value(kel::String(L"DE")));
    EXPECT_EQ(tuner.country(), 49);
    setParameter("Country", ruvo::Value(kel::String(L"gb")));
    EXPECT_EQ(tuner.country(), 44);
}

TEST_F(DigitalTunerTest, UserDefinedOrEmptyCountryAsksTheUserAmongTheSupportedCountries)
{
    DVBTProbe tuner(device(L"Lab DVB-T", DeviceCapability::VideoCapture() | DeviceCapability::DigitalTVTuner()));
    tuner.supports({49, 44, 49});

    // Without prompting there is no country.
    recorder().setPromptEnabled(false);
    setParameter("Country", ruvo::Value(kel::String(L"UserDefined")));
    EXPECT_EQ(tuner.country(), -1);

    recorder().setPromptEnabled(true);
    {
        sorvane::test::CountryDialogDriver driver(L"Germany (Deutschland)");
        EXPECT_EQ(tuner.country(), 49);
        EXPECT_EQ(driver.items().size(), 2u);
    }
    ruvo::DiagModule::unsetAllParameters();
    {
        sorvane::test::CountryDialogDriver driver(L"");
        EXPECT_EQ(tuner.country(), 0);
        EXPECT_TRUE(driver.shown());
    }
    EXPECT_TRUE(log().contains(L"***DialogBox returned: 0"));
}

TEST_F(DigitalTunerTest, DTMBIsRecognisedByNameInAnyCase)
{
    DVBTProbe tuner(device(L"Lab DVB-T", DeviceCapability::VideoCapture() | DeviceCapability::DigitalTVTuner()));
    EXPECT_TRUE(tuner.isDTMBName(L"Lab DTMB Tuner"));
    EXPECT_TRUE(tuner.isDTMBName(L"USB DMB-TH stick"));
    EXPECT_TRUE(tuner.isDTMBName(L"dmbth receiver"));
    EXPECT_FALSE(tuner.isDTMBName(L"Lab DVB-T Tuner"));
    EXPECT_FALSE(tuner.isDTMBName(L"DMB tuner"));
}

} // namespace
