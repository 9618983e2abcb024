// `sorvane-diag list` against the lab: the framework device records the host builds from
// the system's capture monikers.
#include "HostProgram.h"
#include "JsonValue.h"

#include <atlbase.h>
#include <dshow.h>
#include <gtest/gtest.h>

using sorvane::test::HostProgram;
using sorvane::test::contains;
using sorvane::test::narrow;
using sorvane::test::wide;
using sorvane::test::JsonValue;

namespace {

const JsonValue& deviceNamed(const JsonValue& devices, const std::string& name)
{
    for (size_t i = 0; i < devices.size(); ++i) {
        if (devices[i]["name"].text() == name) return devices[i];
    }
    static const JsonValue none;
    return none;
}

std::vector<std::string> capabilities(const JsonValue& device)
{
    std::vector<std::string> names;
    for (size_t i = 0; i < device["capabilities"].size(); ++i) names.push_back(device["capabilities"][i].text());
    return names;
}

// How many capture monikers the system device enumerator lists to this process.
size_t monikerCount()
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    size_t count = 0;
    {
        CComPtr<ICreateDevEnum> enumerator;
        CComPtr<IEnumMoniker> monikers;
        if (SUCCEEDED(enumerator.CoCreateInstance(CLSID_SystemDeviceEnum)) &&
            enumerator->CreateClassEnumerator(CLSID_VideoInputDeviceCategory, &monikers, 0) == S_OK) {
            for (;;) {
                CComPtr<IMoniker> moniker;
                if (monikers->Next(1, &moniker, nullptr) != S_OK) break;
                ++count;
            }
        }
    }
    CoUninitialize();
    return count;
}

} // namespace

TEST(SorvaneDiagListTest, EveryCaptureMonikerBecomesADeviceRecord)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"list", L"--json", L"-"});
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(0u, outcome.exitCode) << outcome.err;
    const JsonValue json = JsonValue::parse(outcome.out);
    EXPECT_EQ("PASS", json["result"].text());
    const JsonValue& devices = json["devices"];
    ASSERT_EQ(monikerCount(), devices.size());
    for (size_t i = 0; i < devices.size(); ++i) {
        EXPECT_EQ(static_cast<double>(i), devices[i]["index"].number());
        EXPECT_EQ(devices[i]["name"].text(), devices[i]["properties"]["AnalogFriendlyName"].text());
    }
}

TEST(SorvaneDiagListTest, RecordsCarryTheLocatorAndCapabilitiesTheLibraryMatches)
{
    const JsonValue devices = JsonValue::parse(HostProgram::run({L"list", L"--json", L"-"}).out)["devices"];

    const JsonValue& webcam = deviceNamed(devices, "Lab Webcam YUY2");
    ASSERT_FALSE(webcam.isNull());
    EXPECT_EQ("Lab USB camera, YUY2, camera control without privacy", webcam["description"].text());
    // "\\?\usb#vid_045e&...#{65e8...}\global": after "?\", upper case, "#" as "\".
    EXPECT_EQ("USB\\VID_045E&PID_0772&MI_00\\7&2B3C&0&0000\\{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL",
              webcam["osLocator"].text());
    EXPECT_EQ((std::vector<std::string>{"VideoCapture", "Webcam"}), capabilities(webcam));

    const JsonValue& tuner = deviceNamed(devices, "Lab Analog TV Tuner");
    ASSERT_FALSE(tuner.isNull());
    EXPECT_EQ((std::vector<std::string>{"VideoCapture", "AnalogTVTuner", "FMRadioTuner"}), capabilities(tuner));

    // A capture card without a tuner is a video device, but not a webcam: its crossbar says so.
    const JsonValue& card = deviceNamed(devices, "Lab Analog Capture Card");
    ASSERT_FALSE(card.isNull());
    EXPECT_EQ((std::vector<std::string>{"VideoCapture"}), capabilities(card));
}

TEST(SorvaneDiagListTest, APersonReadsIndexNameLocatorAndCapabilities)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"list"});
    EXPECT_EQ(0u, outcome.exitCode);
    const std::string& text = outcome.out;
    EXPECT_TRUE(contains(text, " video capture devices:")) << text;
    const size_t entry = text.find("] Lab Analog TV Tuner\n");
    ASSERT_NE(std::string::npos, entry) << text;
    const std::string rest = text.substr(entry);
    EXPECT_TRUE(contains(rest, "description:  Lab PCI TV card"));
    EXPECT_TRUE(contains(rest, "locator:      PCI\\VEN_14F1&DEV_8800"));
    EXPECT_TRUE(contains(rest, "capabilities: VideoCapture, AnalogTVTuner, FMRadioTuner"));
    EXPECT_TRUE(contains(text, "Result: PASS"));
}
