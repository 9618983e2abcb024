// The Plug and Play facts the lab derives from a description: instance IDs as Windows builds
// device paths from them, the ID lists of PCI and USB hardware, one record per hardware,
// defaults, and mistakes named by their line.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "devices/SetupApiRecord.h"
#include "setup/LabDescription.h"

using lab::SetupApiRecord;

namespace {

std::vector<SetupApiRecord> records(const std::string &text, std::wstring &error)
{
    lab::LabDescription description;
    std::vector<SetupApiRecord> result;
    if (description.parse(text, error))
        SetupApiRecord::fromDescription(description.devices(), result, error);
    return result;
}

const char kCard[] = "path = "
                     "\\\\?\\pci#ven_14f1&dev_8800&subsys_88010070&rev_05#4&2f6a4bd6&0&2008#{65e8773d-8f56-11d0-a3b9-"
                     "00a0c9223196}\\global\n";

} // namespace

TEST(LabSetupApiRecord, InstanceIdsComeFromDevicePathsAsWindowsBuildsThem)
{
    EXPECT_EQ(L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000",
              SetupApiRecord::instanceIdFromPath(
                  L"\\\\?\\usb#vid_046d&pid_0825&mi_00#7&1a2b&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global"));
    EXPECT_EQ(L"", SetupApiRecord::instanceIdFromPath(L"@device:sw:{860BB310-5D01-11D0-BD3B-00A0C911CE86}\\Soft"));
    EXPECT_EQ(L"", SetupApiRecord::instanceIdFromPath(L"usb#vid_1"));
}

TEST(LabSetupApiRecord, PciAndUsbHardwareListTheirIdsFromTheMostSpecificDown)
{
    std::wstring error;
    const std::vector<SetupApiRecord> found =
        records(std::string("[analog-tuner]\nname = Card\n") + kCard +
                    "[webcam]\nname = Cam\npath = \\\\?\\usb#vid_046d&pid_0825&mi_00#7&1a2b&0&0000#{x}\\global\n"
                    "[webcam]\nname = Software\n",
                error);
    ASSERT_EQ(2u, found.size()) << std::string(error.begin(), error.end());
    const SetupApiRecord &card = found[0];
    EXPECT_EQ(L"PCI", card.enumerator);
    EXPECT_EQ(L"MEDIA", card.className);
    EXPECT_EQ((std::vector<std::wstring>{L"PCI\\VEN_14F1&DEV_8800&SUBSYS_88010070&REV_05",
                                         L"PCI\\VEN_14F1&DEV_8800&SUBSYS_88010070", L"PCI\\VEN_14F1&DEV_8800&CC_040000",
                                         L"PCI\\VEN_14F1&DEV_8800&CC_0400"}),
              card.hardwareIds);
    EXPECT_EQ(L"PCI\\VEN_14F1&DEV_8800&REV_05", card.compatibleIds.front());
    const SetupApiRecord &camera = found[1];
    EXPECT_EQ(L"Image", camera.className);
    EXPECT_EQ(std::vector<std::wstring>{L"USB\\VID_046D&PID_0825&MI_00"}, camera.hardwareIds);
    EXPECT_EQ(L"USB\\Class_0E&SubClass_03&Prot_00", camera.compatibleIds.front());
    EXPECT_EQ(L"Cam", camera.deviceDescription);
    EXPECT_EQ(L"Sorvane Lab", camera.manufacturer);
    EXPECT_EQ(L"Sorvane Lab", camera.driverProvider);
    EXPECT_EQ(L"1.0.0.0", camera.driverVersion);
    EXPECT_EQ(L"sorvanelab.sys", camera.driverFile);
    EXPECT_EQ(L"sorvanelab", camera.service);
    EXPECT_EQ(L"", camera.friendlyName);
}

TEST(LabSetupApiRecord, SectionsOfOneHardwareMakeOneRecordTheFirstValueWinning)
{
    std::wstring error;
    const std::vector<SetupApiRecord> found =
        records(std::string("[analog-tuner]\nname = Card Capture\n") + kCard +
                    "[bda-tuner]\nname = Card Tuner\nmanufacturer = Second\ndriver.file = card.sys\n" + kCard,
                error);
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(L"Card Capture", found[0].deviceDescription);
    EXPECT_EQ(L"Sorvane Lab", found[0].manufacturer);
    EXPECT_EQ(L"sorvanelab.sys", found[0].driverFile);
    EXPECT_EQ(L"Card Capture, Card Tuner", found[0].sections);
}

TEST(LabSetupApiRecord, NamesTheLineOfAMistake)
{
    std::wstring error;
    records(std::string("[webcam]\nname = A\nclass = SOUND\n") + kCard, error);
    EXPECT_EQ(L"device at line 1: class is IMAGE, MEDIA or CAMERA, not SOUND", error);
    records(std::string("[webcam]\nname = A\ndriver.version = 1.2.3.4.5\n") + kCard, error);
    EXPECT_EQ(L"device at line 1: driver.version is up to four numbers joined by '.', not 1.2.3.4.5", error);
    records(std::string("[webcam]\nname = A\ndriver.date = 2020-01-01\n") + kCard, error);
    EXPECT_EQ(L"device at line 1: driver.date is MM/DD/YYYY, not 2020-01-01", error);
}
