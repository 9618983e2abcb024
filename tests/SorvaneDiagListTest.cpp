// `sorvane-diag list` against the lab, in its three forms: the table a person scans, the
// library's records (--verbose) and the report with each device's identity (--json).
#include "HostProgram.h"
#include "JsonValue.h"

#include <gtest/gtest.h>
#include <set>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;

namespace {

const char *const kLabDevices[] = {"Lab Webcam RGB24",       "Lab Webcam RGB24 Top-Down", "Lab Webcam YUY2",
                                   "Lab Webcam UYVY",        "Lab Webcam MJPG",           "Lab Webcam YUY2 MJPG",
                                   "Lab Webcam HD",          "Lab Webcam In Use",         "Lab Analog TV Tuner",
                                   "Lab Analog Capture Card"};

const JsonValue &deviceNamed(const JsonValue &devices, const std::string &name)
{
    for (size_t i = 0; i < devices.size(); ++i) {
        if (devices[i]["name"].text() == name)
            return devices[i];
    }
    static const JsonValue none;
    return none;
}

std::vector<std::string> texts(const JsonValue &list)
{
    std::vector<std::string> values;
    for (size_t i = 0; i < list.size(); ++i)
        values.push_back(list[i].text());
    return values;
}

// The table line that names `device`, from its name on.
std::string rowOf(const std::string &text, const std::string &device)
{
    const size_t at = text.find("  " + device + "  ");
    if (at == std::string::npos)
        return std::string();
    const size_t start = text.rfind('\n', at) + 1;
    return text.substr(start, text.find('\n', at) - start);
}

// Collapses runs of blanks, so a row reads the same whatever the column widths.
std::string squeezed(const std::string &text)
{
    std::string out;
    for (char c : text) {
        if (c == ' ' && !out.empty() && out.back() == ' ')
            continue;
        out += c;
    }
    return out;
}

} // namespace

TEST(SorvaneDiagListTest, TheReportHoldsEachDeviceRecordWithItsIdentity)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"list", L"--json", L"-"});
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(0u, outcome.exitCode) << outcome.err;
    const JsonValue json = JsonValue::parse(outcome.out);
    EXPECT_EQ("PASS", json["result"].text());
    const JsonValue &devices = json["devices"];
    // Two cameras of one model share a name: a device is known by its name and identity.
    std::set<std::string> identities;
    std::multiset<std::string> names;
    for (size_t i = 0; i < devices.size(); ++i) {
        EXPECT_EQ(static_cast<double>(i), devices[i]["index"].number());
        identities.insert(devices[i]["name"].text() + " @ " + devices[i]["osLocator"].text());
        names.insert(devices[i]["name"].text());
    }
    EXPECT_EQ(identities.size(), devices.size()) << "a device listed twice";
    for (const char *name : kLabDevices)
        EXPECT_EQ(1u, names.count(name)) << name;
    EXPECT_EQ(2u, names.count("Lab Twin Camera"));

    // The webcam's identity and driver facts come from SetupAPI, its name from its moniker.
    const JsonValue &webcam = deviceNamed(devices, "Lab Webcam YUY2");
    ASSERT_FALSE(webcam.isNull());
    EXPECT_EQ("Lab USB camera, YUY2, camera control without privacy", webcam["description"].text());
    EXPECT_EQ("USB\\VID_045E&PID_0772&MI_00\\7&2B3C&0&0000\\{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL",
              webcam["osLocator"].text());
    EXPECT_EQ((std::vector<std::string>{"VideoCapture", "Webcam"}), texts(webcam["capabilities"]));
    EXPECT_EQ("Lab Webcam YUY2", webcam["properties"]["AnalogFriendlyName"].text());
    const JsonValue &identity = webcam["identity"];
    EXPECT_EQ("webcam", identity["kind"].text());
    EXPECT_EQ("USB\\VID_045E&PID_0772&MI_00\\7&2B3C&0&0000", identity["instanceId"].text());
    EXPECT_EQ("045E", identity["vendorId"].text());
    EXPECT_EQ("0772", identity["deviceId"].text());
    EXPECT_EQ("", identity["subsysId"].text());
    EXPECT_EQ("USB", identity["bus"].text());
    EXPECT_EQ("Port_#0003.Hub_#0003", identity["location"].text());
    EXPECT_EQ("Microsoft", identity["manufacturer"].text());
    EXPECT_EQ("Microsoft", identity["driver"]["provider"].text());
    EXPECT_EQ("10.0.19041.1202", identity["driver"]["version"].text());
    EXPECT_FALSE(identity["driver"]["date"].text().empty());
    EXPECT_TRUE(contains(identity["driver"]["inf"].text(), "\\inf\\")) << identity["driver"]["inf"].text();
    EXPECT_TRUE(contains(identity["driver"]["file"].text(), "usbvideo.sys")) << identity["driver"]["file"].text();
    EXPECT_EQ("Lab Webcam YUY2", identity["analogFilter"].text());
    EXPECT_EQ("", identity["digitalFilter"].text());
    ASSERT_EQ(2u, identity["capabilities"].size());
    EXPECT_EQ("WebCamControl", identity["capabilities"][1]["feature"].text());

    const JsonValue &tuner = deviceNamed(devices, "Lab Analog TV Tuner");
    ASSERT_FALSE(tuner.isNull());
    EXPECT_EQ((std::vector<std::string>{"VideoCapture", "AnalogTVTuner", "FMRadioTuner"}),
              texts(tuner["capabilities"]));
    EXPECT_EQ("analog tuner", tuner["identity"]["kind"].text());
    EXPECT_EQ("88010070", tuner["identity"]["subsysId"].text());
    EXPECT_EQ("05", tuner["identity"]["revisionId"].text());
    const JsonValue &tuning = tuner["identity"]["capabilities"][1];
    EXPECT_EQ("Analog", tuning["type"].text());
    EXPECT_EQ("TVTuning", tuning["feature"].text());
    EXPECT_EQ((std::vector<std::string>{"NTSC (M) 7.5 IRE black", "PAL (B)", "SECAM (L)"}), texts(tuning["standards"]));

    // A BDA tuner the probe connected to the ATSC network provider.
    const JsonValue &digital = deviceNamed(devices, "Lab ATSC QAM Tuner");
    ASSERT_FALSE(digital.isNull());
    EXPECT_EQ((std::vector<std::string>{"VideoCapture", "DigitalTVTuner"}), texts(digital["capabilities"]));
    EXPECT_EQ("digital tuner", digital["identity"]["kind"].text());
    EXPECT_EQ("Lab ATSC QAM Tuner", digital["identity"]["digitalFilter"].text());
    EXPECT_EQ("Lab ATSC QAM Tuner", digital["properties"]["DigitalFriendlyName"].text());
    EXPECT_EQ("", digital["identity"]["analogFilter"].text());

    // A capture card without a tuner is a video device, but not a webcam.
    const JsonValue &card = deviceNamed(devices, "Lab Analog Capture Card");
    ASSERT_FALSE(card.isNull());
    EXPECT_EQ((std::vector<std::string>{"VideoCapture"}), texts(card["capabilities"]));
    EXPECT_EQ("video capture", card["identity"]["kind"].text());
}

TEST(SorvaneDiagListTest, APersonScansATableOfIndexNameKindBusIdsAndDriver)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"list"});
    EXPECT_EQ(0u, outcome.exitCode);
    const std::string &text = outcome.out;
    EXPECT_TRUE(contains(text, " capture devices:\n")) << text;
    EXPECT_TRUE(contains(squeezed(text), "\n # Name Kind Bus VID:PID Driver\n")) << text;
    EXPECT_TRUE(contains(squeezed(rowOf(text, "Lab Analog TV Tuner")),
                         " Lab Analog TV Tuner analog tuner PCI 14F1:8800 1.15.26204.0"))
        << text;
    EXPECT_TRUE(
        contains(squeezed(rowOf(text, "Lab Webcam RGB24")), " Lab Webcam RGB24 webcam USB 046D:0825 13.80.853.0"))
        << text;
    EXPECT_TRUE(contains(squeezed(rowOf(text, "Lab Analog Capture Card")), " video capture PCI 109E:036E 5.3.4.0"))
        << text;
    EXPECT_TRUE(contains(squeezed(rowOf(text, "Lab ATSC QAM Tuner")), " digital tuner PCI 14F1:8852 ")) << text;
    // The columns line up: every row's name starts where the header's does.
    const size_t header = text.find("  Name") + 2;
    const size_t headerColumn = header - (text.rfind('\n', header) + 1);
    const std::string row = rowOf(text, "Lab Webcam HD");
    EXPECT_EQ(headerColumn, row.find("Lab Webcam HD")) << text;
    EXPECT_TRUE(contains(text, "Result: PASS"));
}

TEST(SorvaneDiagListTest, VerboseShowsTheLibrarysRecordsOfEachDevice)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"list", L"--verbose"});
    EXPECT_EQ(0u, outcome.exitCode);
    const std::string &text = outcome.out;
    const size_t entry = text.find("] Lab Webcam YUY2\n");
    ASSERT_NE(std::string::npos, entry) << text;
    const std::string record = text.substr(entry, text.find("\n[", entry) - entry);
    EXPECT_TRUE(contains(record, "\n    Name: Lab Webcam YUY2\n")) << record;
    EXPECT_TRUE(contains(record, "\n    Driver Provider: Microsoft\n")) << record;
    EXPECT_TRUE(contains(record, "Moniker Name: @device:")) << record;
    EXPECT_TRUE(contains(record, "Name: Microsoft LifeCam Studio")) << record;
    EXPECT_TRUE(contains(record, "Setup API Enumerator Type: USB")) << record;
    EXPECT_TRUE(contains(text, "Result: PASS"));

    const HostProgram::Outcome refused = HostProgram::run({L"webcam", L"--verbose"});
    EXPECT_EQ(2u, refused.exitCode);
    EXPECT_TRUE(contains(refused.err, "takes no --verbose")) << refused.err;
}
