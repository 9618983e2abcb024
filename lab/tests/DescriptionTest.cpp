// The description file's syntax as a newcomer writes it: sections, comments, device paths
// full of '#', repeated keys, and clear errors.
#include <gtest/gtest.h>

#include "setup/LabDescription.h"

TEST(LabDescription, ReadsDevicesWithPathsRepeatedKeysAndComments)
{
    const std::string text = "# the lab\n"
                             "[webcam]   # a camera\n"
                             "name = Cam One\n"
                             "path = \\\\?\\usb#vid_046d&pid_0825#7&1a2b#{65e8773d}\\global  # its path\n"
                             "format = YUY2 640x480 30\n"
                             "\n"
                             "format = YUY2 320x240 30\n"
                             "[analog-tuner]\n"
                             "name = Card\n";
    lab::LabDescription description;
    std::wstring error;
    ASSERT_TRUE(description.parse(text, error)) << std::string(error.begin(), error.end());
    ASSERT_EQ(2u, description.devices().size());
    const lab::DeviceDescription &camera = description.devices()[0];
    EXPECT_EQ(L"webcam", camera.kind);
    EXPECT_EQ(2, camera.line);
    EXPECT_EQ(L"\\\\?\\usb#vid_046d&pid_0825#7&1a2b#{65e8773d}\\global", camera.value(L"path"));
    EXPECT_EQ(L"YUY2 640x480 30\nYUY2 320x240 30", camera.value(L"FORMAT"));
    EXPECT_EQ((std::vector<std::wstring>{L"name", L"path", L"format"}), camera.keys());
    EXPECT_EQ(L"", camera.value(L"privacy"));
    EXPECT_EQ(L"analog-tuner", description.devices()[1].kind);
}

TEST(LabDescription, NamesTheLineOfAMistake)
{
    lab::LabDescription description;
    std::wstring error;
    EXPECT_FALSE(description.parse("name = orphan\n", error));
    EXPECT_EQ(L"line 1: expected key = value inside a [kind] section", error);
    EXPECT_FALSE(description.parse("[webcam]\nname = x\njust words\n", error));
    EXPECT_EQ(L"line 3: expected key = value inside a [kind] section", error);
    EXPECT_FALSE(description.parse("[webcam\n", error));
    EXPECT_EQ(L"line 1: a section is written [kind]", error);
    EXPECT_FALSE(description.load(L"Z:\\no\\such\\lab.conf", error));
}
