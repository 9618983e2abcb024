// How monikers and SetupAPI records become capture devices, with devices of the test's own
// published in the system's categories and SetupAPI tree (seen by every program of the prefix,
// so this program runs alone): names that mark software never become devices, the analog and
// digital filters of one card form one device, SetupAPI records never make devices, and a
// driver package that copies nothing leaves the driver file of the device before it.
#include "FrameworkTest.h"
#include "ScopedMonikers.h"

#include <CaptureDevice.h>
#include <SdkGuids.h>
#include <SetupApiDevice.h>
#include <SmartCoInitialize.h>
#include <lab/ScopedLabDevices.h>

#include <dshow.h>
#include <uuids.h>

namespace {

using lab::ScopedLabDevices;
using sorvane::CaptureDevice;
using sorvane::SetupApiDevice;
using sorvane::SetupApiDevType;
using sorvane::SetupApiEnumType;
using sorvane::test::ScopedMonikers;

kel::String text(const wchar_t *value)
{
    return kel::String(value);
}

const wchar_t kCardPath[] =
    L"\\\\?\\pci#ven_1131&dev_7160&subsys_12345678&rev_03#4&3a1b&0&0010#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global";

bool anyDeviceNamed(const kel::Array<CaptureDevice> &devices, const wchar_t *part)
{
    for (const CaptureDevice &device : devices) {
        if (device.name().contains(text(part)))
            return true;
    }
    return false;
}

// A PCI card whose capture filter and BDA tuner filter share one device path, as hybrid cards do.
const wchar_t kHybridCard[] =
    L"[analog-capture]\n"
    L"name = Own Hybrid Card Capture\n"
    L"path = "
    L"\\\\?\\pci#ven_1131&dev_7162&subsys_00011131&rev_01#4&77&0&0018#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
    L"manufacturer = Own Maker\n"
    L"device-description = Own Hybrid Card\n"
    L"driver.version = 2.3.4.5\n"
    L"driver.file = ownhybrid.sys\n"
    L"[analog-capture]\n"
    L"name = Own Hybrid Card BDA Tuner\n"
    L"category = {71985F48-1CA1-11D3-9CC8-00C04F7971E0}\n"
    L"path = "
    L"\\\\?\\pci#ven_1131&dev_7162&subsys_00011131&rev_01#4&77&0&0018#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n";

// MEDIA-class hardware on USB whose driver publishes no capture filter (a USB audio device).
const wchar_t kHardwareWithoutFilter[] =
    L"[analog-capture]\n"
    L"name = Own USB Microphone\n"
    L"class = MEDIA\n"
    L"moniker = no\n"
    L"path = \\\\?\\usb#vid_0d8c&pid_0014&mi_00#6&1&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n";

// Two PCI cards that sort after the lab's: the second one's driver package copies nothing.
const wchar_t kTwoCards[] =
    L"[analog-capture]\n"
    L"name = Own Card With Driver\n"
    L"path = "
    L"\\\\?\\pci#ven_fffe&dev_0001&subsys_00000000&rev_01#4&1&0&0001#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
    L"manufacturer = Own Maker\n"
    L"driver.file = owncard.sys\n"
    L"[analog-capture]\n"
    L"name = Own Card Without Files\n"
    L"path = "
    L"\\\\?\\pci#ven_ffff&dev_0002&subsys_00000000&rev_01#4&2&0&0002#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
    L"manufacturer = Other Maker\n"
    L"driver.file = none\n";

const SetupApiDevice *findRecord(const kel::Array<SetupApiDevice> &records, const wchar_t *instanceId, int &index)
{
    for (index = 0; index < records.size(); ++index) {
        if (records[index].deviceInstanceId() == text(instanceId))
            return &records[index];
    }
    return nullptr;
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

TEST_F(CaptureDeviceMergeTest, ACardWithoutSetupApiRecordAnswersFromItsMonikers)
{
    ASSERT_TRUE(videoInputs.add({L"Own Hybrid Capture", kCardPath, L"", L""}));
    ASSERT_TRUE(bdaTuners.add({L"Own Hybrid BDA Tuner", kCardPath, L"", L""}));

    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    int cards = 0;
    for (const CaptureDevice &device : devices) {
        if (device.deviceInstanceId() != text(L"PCI\\VEN_1131&DEV_7160&SUBSYS_12345678&REV_03\\4&3A1B&0&0010"))
            continue;
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

TEST_F(CaptureDeviceMergeTest, AHybridCardIsOneDeviceWithOneSetupApiRecord)
{
    ScopedLabDevices card(kHybridCard);
    ASSERT_EQ(card.instanceIds().size(), 1u);

    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    int found = 0;
    for (const CaptureDevice &device : devices) {
        if (device.deviceInstanceId() != text(L"PCI\\VEN_1131&DEV_7162&SUBSYS_00011131&REV_01\\4&77&0&0018"))
            continue;
        ++found;
        EXPECT_EQ(device.name(), text(L"Own Hybrid Card Capture"));
        EXPECT_EQ(device.analogFilterName(), text(L"Own Hybrid Card Capture"));
        EXPECT_EQ(device.digitalFilterName(), text(L"Own Hybrid Card BDA Tuner"));
        EXPECT_EQ(device.setupApiDevices().size(), 1);
        EXPECT_EQ(device.deviceType(), text(L"MEDIA"));
        EXPECT_EQ(device.manufacturer(), text(L"Own Maker"));
        EXPECT_EQ(device.driverVersion(), text(L"2.3.4.5"));
        EXPECT_TRUE(device.driverName().toLower().endsWith(text(L"\\ownhybrid.sys"))) << device.driverName().toUtf8();
        EXPECT_EQ(device.vendorIdCode(), text(L"1131"));
        EXPECT_EQ(device.deviceIdCode(), text(L"7162"));
        EXPECT_EQ(device.revIdCode(), text(L"01"));
    }
    EXPECT_EQ(found, 1);
}

TEST_F(CaptureDeviceMergeTest, WithoutCaptureHardwareEverySetupApiRecordIsIgnored)
{
    ScopedLabDevices audioOnly(kHardwareWithoutFilter, ScopedLabDevices::LabDevices::Hidden);
    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    EXPECT_EQ(devices.size(), 0);
    const size_t reviewed = log().find(text(L"Reviewing Setup API device: ")).size();
    EXPECT_GE(reviewed, 1u);
    EXPECT_EQ(log().find(text(L"Setup API device ignored: ")).size(), reviewed);
    EXPECT_TRUE(log().contains(text(L"Setup API device ignored: Guid: USB\\VID_0D8C&PID_0014&MI_00\\6&1&0&0000")));
    EXPECT_TRUE(log().contains(
        text(L"136 DirectShow Device Enumerator is null.  Usually means no devices of this type on the system.")));
}

TEST_F(CaptureDeviceMergeTest, ADriverThatCopiesNoFileKeepsTheFileOfTheDeviceBefore)
{
    ScopedLabDevices cards(kTwoCards);
    ASSERT_EQ(cards.instanceIds().size(), 2u);

    kel::Array<SetupApiDevice> records;
    kel::Array<SetupApiDevType> media;
    media.add(SetupApiDevType::MEDIA());
    kel::Array<SetupApiEnumType> pci;
    pci.add(SetupApiEnumType::PCI());
    SetupApiDevice::enumerateDevices(records, media, pci);
    int withDriver = 0;
    int withoutFiles = 0;
    const SetupApiDevice *first =
        findRecord(records, L"PCI\\VEN_FFFE&DEV_0001&SUBSYS_00000000&REV_01\\4&1&0&0001", withDriver);
    const SetupApiDevice *second =
        findRecord(records, L"PCI\\VEN_FFFF&DEV_0002&SUBSYS_00000000&REV_01\\4&2&0&0002", withoutFiles);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    ASSERT_EQ(withoutFiles, withDriver + 1) << "the two cards were not enumerated one after the other";
    EXPECT_TRUE(first->driverName().toLower().endsWith(text(L"\\owncard.sys"))) << first->driverName().toUtf8();
    EXPECT_EQ(second->driverName(), first->driverName());
    EXPECT_EQ(second->manufacturer(), text(L"Other Maker"));
    EXPECT_FALSE(second->driverInfFile().isEmpty());
}

} // namespace
