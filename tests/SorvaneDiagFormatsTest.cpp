// `sorvane-diag formats`: each lab device's capabilities in the order its capture pin lists
// them, with sizes and frame rates, on the terminal and in the report.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::ScratchFolder;

namespace {

const JsonValue *listingOf(const JsonValue &report, const std::string &name)
{
    for (size_t i = 0; i < report["formats"].size(); ++i) {
        if (report["formats"][i]["name"].text() == name)
            return &report["formats"][i];
    }
    return nullptr;
}

} // namespace

TEST(SorvaneDiagFormatsTest, EveryDeviceListsItsSubtypesSizesAndRates)
{
    ScratchFolder folder(L"sorvane-diag-formats");
    const HostProgram::Outcome outcome = HostProgram::run({L"formats", L"--json", folder.file(L"report.json")});
    // The lab holds an unplugged camera, which cannot be asked: the listing is FAIL, and says so.
    ASSERT_EQ(10u, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "] Lab Webcam Unplugged\n      formats unknown: the device could not be opened: "
                                      "0x8007048F"))
        << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "] Lab Webcam YUY2 MJPG\n"
                                      "      MJPG  640x480   30 fps (3-30)\n"
                                      "      YUY2  320x240   30 fps (3-30)\n"
                                      "      MJPG  320x240   30 fps (3-30)\n"))
        << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "      UYVY  320x240   15 fps (1.5-15)\n")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "      RGB24 160x120   30 fps (3-30)\n")) << outcome.out;

    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    EXPECT_EQ("FAIL", report["result"].text());
    const JsonValue *unplugged = listingOf(report, "Lab Webcam Unplugged");
    ASSERT_NE(nullptr, unplugged);
    EXPECT_FALSE((*unplugged)["problem"].text().empty());
    EXPECT_EQ(0u, (*unplugged)["formats"].size());
    // Every device with an analog capture filter is listed; a digital tuner has no video pin.
    size_t analogDevices = 0;
    for (size_t i = 0; i < report["devices"].size(); ++i)
        analogDevices += !report["devices"][i]["properties"]["AnalogFriendlyName"].text().empty();
    EXPECT_EQ(analogDevices, report["formats"].size());
    EXPECT_EQ(nullptr, listingOf(report, "Lab ATSC QAM Tuner"));
    const JsonValue *hd = listingOf(report, "Lab Webcam HD");
    ASSERT_NE(nullptr, hd);
    ASSERT_EQ(1u, (*hd)["formats"].size());
    const JsonValue &format = (*hd)["formats"][0];
    EXPECT_EQ("YUY2", format["subtype"].text());
    EXPECT_EQ(1920.0, format["width"].number());
    EXPECT_EQ(1080.0, format["height"].number());
    EXPECT_NEAR(60.0, format["fps"].number(), 0.01);
    EXPECT_NEAR(6.0, format["minFps"].number(), 0.01);
}

TEST(SorvaneDiagFormatsTest, OneDeviceByNameAndTheCommandInTheHelp)
{
    const HostProgram::Outcome outcome = HostProgram::run({L"formats", L"--device", L"Lab Webcam UYVY"});
    ASSERT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "] Lab Webcam UYVY\n      UYVY  640x480   30 fps (3-30)\n")) << outcome.out;
    EXPECT_FALSE(contains(outcome.out, "Lab Webcam YUY2")) << outcome.out;

    const HostProgram::Outcome help = HostProgram::run({L"--help"});
    EXPECT_TRUE(contains(help.out, "  formats   list each video device's formats")) << help.out;
}

TEST(SorvaneDiagFormatsTest, TwoCamerasOfOneModelEachShowTheirOwnFormats)
{
    ScratchFolder folder(L"sorvane-diag-formats-twins");
    const HostProgram::Outcome all = HostProgram::run({L"formats", L"--json", folder.file(L"report.json")});
    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    // Same name and description: only the device path tells the two apart.
    std::vector<const JsonValue *> twins;
    for (size_t i = 0; i < report["formats"].size(); ++i) {
        if (report["formats"][i]["name"].text() == "Lab Twin Camera")
            twins.push_back(&report["formats"][i]);
    }
    ASSERT_EQ(2u, twins.size()) << all.out;
    std::vector<double> widths;
    for (const JsonValue *twin : twins) {
        ASSERT_EQ(1u, (*twin)["formats"].size()) << all.out;
        widths.push_back((*twin)["formats"][0]["width"].number());
    }
    std::sort(widths.begin(), widths.end());
    EXPECT_EQ((std::vector<double>{176.0, 352.0}), widths) << all.out;

    // Chosen by its index, each shows its own formats too.
    for (const JsonValue *twin : twins) {
        const std::wstring index = std::to_wstring(static_cast<int>((*twin)["index"].number()));
        const HostProgram::Outcome one = HostProgram::run({L"formats", L"--device", index});
        ASSERT_EQ(0u, one.exitCode) << one.out << one.err;
        const std::string size = (*twin)["formats"][0]["width"].number() == 176.0 ? "176x144" : "352x288";
        EXPECT_TRUE(contains(one.out, "] Lab Twin Camera\n      YUY2  " + size)) << one.out;
    }
}
