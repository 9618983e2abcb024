// How monikers become capture devices, with monikers of the test's own published in the
// system's video input and BDA tuner categories (seen by every program of the prefix, so this
// program runs alone): names that mark software never become devices, and the analog and
// digital filters of one card form one device.
#include "FrameworkTest.h"
#include "ScopedMonikers.h"

#include <CaptureDevice.h>
#include <SdkGuids.h>
#include <SmartCoInitialize.h>

#include <dshow.h>
#include <uuids.h>

namespace {

using sorvane::CaptureDevice;
using sorvane::test::ScopedMonikers;

kel::String text(const wchar_t* value) { return kel::String(value); }

const wchar_t kCardPath[] =
    L"\\\\?\\pci#ven_1131&dev_7160&subsys_12345678&rev_03#4&3a1b&0&0010#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global";

bool anyDeviceNamed(const kel::Array<CaptureDevice>& devices, const wchar_t* part)
{
    for (const CaptureDevice& device : devices) {
        if (device.name().contains(text(part))) return true;
    }
    return false;
}

class CaptureDeviceMergeTest : public sorvane::test::FrameworkTest {
protected:
    void SetUp() override
    {
        FrameworkTest::SetUp();
        ASSERT_TRUE(m_com.initialize());
    }

    void TearDown() override
    {
        m_com.uninitialize();
        FrameworkTest::TearDown();
    }

    ScopedMonikers videoInputs{CLSID_VideoInputDeviceCategory};
    ScopedMonikers bdaTuners{KSCATEGORY_BDA_NETWORK_TUNER};

private:
    sorvane::SmartCoInitialize m_com;
};

TEST_F(CaptureDeviceMergeTest, SoftwareNamesAndPathlessFiltersNeverBecomeDevices)
{
    ASSERT_TRUE(videoInputs.add({L"Own Video Splitter", L"\\\\?\\usb#vid_aaaa&pid_0001#1#{x}", L"", L""}));
    ASSERT_TRUE(videoInputs.add({L"Own Capture filter", L"\\\\?\\usb#vid_aaaa&pid_0002#1#{x}", L"", L""}));
    ASSERT_TRUE(videoInputs.add({L"Own virtual Camera", L"\\\\?\\usb#vid_aaaa&pid_0003#1#{x}", L"", L""}));
    ASSERT_TRUE(videoInputs.add({L"Own Screen Source", L"", L"", L""}));
    ASSERT_TRUE(videoInputs.add({L"Own Plain Camera", L"\\\\?\\usb#vid_aaaa&pid_0004#1#{x}", L"", L""}));

    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    EXPECT_FALSE(anyDeviceNamed(devices, L"Splitter"));
    EXPECT_FALSE(anyDeviceNamed(devices, L"filter"));
    EXPECT_FALSE(anyDeviceNamed(devices, L"virtual"));
    EXPECT_FALSE(anyDeviceNamed(devices, L"Screen Source"));
    EXPECT_TRUE(anyDeviceNamed(devices, L"Own Plain Camera"));
}

TEST_F(CaptureDeviceMergeTest, TheAnalogAndDigitalFiltersOfOneCardAreOneDevice)
{
    ASSERT_TRUE(videoInputs.add({L"Own Hybrid Capture", kCardPath, L"", L""}));
    ASSERT_TRUE(bdaTuners.add({L"Own Hybrid BDA Tuner", kCardPath, L"", L""}));

    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    int cards = 0;
    for (const CaptureDevice& device : devices) {
        if (device.deviceInstanceId() != text(L"PCI\\VEN_1131&DEV_7160&SUBSYS_12345678&REV_03\\4&3A1B&0&0010")) continue;
        ++cards;
        EXPECT_EQ(device.monikers().size(), 2);
        EXPECT_EQ(device.name(), text(L"Own Hybrid Capture"));
        EXPECT_EQ(device.analogFilterName(), text(L"Own Hybrid Capture"));
        EXPECT_EQ(device.digitalFilterName(), text(L"Own Hybrid BDA Tuner"));
        EXPECT_EQ(device.vendorIdCode(), text(L"1131"));
        EXPECT_EQ(device.subsysIdCode(), text(L"12345678"));
        // No SetupAPI record: the driver facts stay empty.
        EXPECT_TRUE(device.driverProvider().isEmpty());
        EXPECT_TRUE(device.driverVersion().isEmpty());
        EXPECT_TRUE(device.deviceType().isEmpty());
    }
    EXPECT_EQ(cards, 1);
    EXPECT_TRUE(log().contains(text(L"Adding moniker to device: Own Hybrid Capture")));
}

} // namespace
