// How monikers and SetupAPI records become capture devices, with devices of the test's own
// published in the system's categories and SetupAPI tree (seen by every program of the prefix,
// so this program runs alone): names that mark software never become devices, the analog and
// digital filters of one card form one device, SetupAPI records never make devices, and a
// driver package that copies nothing leaves the driver file of the device before it.
#include "FaultyMoniker.h"
#include "FrameworkTest.h"
#include "ScopedMonikers.h"

#include <CaptureDevice.h>
#include <SdkGuids.h>
#include <SetupApiDevice.h>
#include <SmartCoInitialize.h>
#include <kel/LogFactory.h>
#include <lab/ScopedLabDevices.h>

#include <dshow.h>
#include <uuids.h>

#include <string>
#include <vector>

namespace {

using lab::ScopedLabDevices;
using sorvane::CaptureCapability;
using sorvane::CaptureDevice;
using sorvane::CaptureStreamType;
using sorvane::DSMoniker;
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

// Two PCI cards. The TV card's capture filter and BDA tuner publish one device path; the split
// card's two filters publish paths that differ after the instance (in their interface class and
// reference), as most cards' do, and its Plug and Play key names no manufacturer ("Mfg").
#define OWN_SPLIT_CARD L"\\\\?\\pci#ven_1131&dev_7171&subsys_00031131&rev_03#4&aa&0&0030#"
const wchar_t kTwoKindsOfCard[] =
    L"[analog-tuner]\n"
    L"name = Own TV Card Capture\n"
    L"path = "
    L"\\\\?\\pci#ven_1131&dev_7170&subsys_00021131&rev_02#4&99&0&0028#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
    L"format = YUY2 320x240 30\n"
    L"tuner-modes = tv\n"
    L"tv-formats = NTSC_M, PAL_B\n"
    L"[bda-tuner]\n"
    L"name = Own TV Card Tuner\n"
    L"path = "
    L"\\\\?\\pci#ven_1131&dev_7170&subsys_00021131&rev_02#4&99&0&0028#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
    L"[analog-capture]\n"
    L"name = Own Split Card Capture\n"
    L"path = " OWN_SPLIT_CARD L"{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
    L"manufacturer = Own Split Maker\n"
    L"mfg = none\n"
    L"[bda-tuner]\n"
    L"name = Own Split Card Tuner\n"
    L"path = " OWN_SPLIT_CARD L"{71985f48-1ca1-11d3-9cc8-00c04f7971e0}\\{0b1c2d3e-4f50-6172-8394-a5b6c7d8e9f0}\n";
const wchar_t kTvCardId[] = L"PCI\\VEN_1131&DEV_7170&SUBSYS_00021131&REV_02\\4&99&0&0028";
const wchar_t kSplitCardId[] = L"PCI\\VEN_1131&DEV_7171&SUBSYS_00031131&REV_03\\4&AA&0&0030";

std::vector<const CaptureDevice *> devicesOf(const kel::Array<CaptureDevice> &devices, const wchar_t *instanceId)
{
    std::vector<const CaptureDevice *> found;
    for (const CaptureDevice &device : devices) {
        if (device.deviceInstanceId() == text(instanceId))
            found.push_back(&device);
    }
    return found;
}

std::vector<std::string> capabilityTexts(const kel::Array<CaptureCapability> &capabilities)
{
    std::vector<std::string> texts;
    for (const CaptureCapability &capability : capabilities)
        texts.push_back(capability.toString().toUtf8());
    return texts;
}

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

// Logged in detail the merge walks the devices for each record; below detail (how ordinary users
// run) it looks them up by instance ID. Either way a card's filters on one path make one device
// with the capabilities of both, and filters on two paths make two devices sharing one record.
TEST_F(CaptureDeviceMergeTest, ARecordCompletesEveryDeviceOfItsHardwareWhateverIsLogged)
{
    ScopedLabDevices cards(kTwoKindsOfCard);
    ASSERT_EQ(cards.instanceIds().size(), 2u);
    // The split card's key names no manufacturer: its driver's does.
    DWORD bytes = 0;
    EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE,
                           (std::wstring(L"System\\CurrentControlSet\\Enum\\") + kSplitCardId).c_str(), L"Mfg",
                           RRF_RT_REG_SZ, nullptr, nullptr, &bytes),
              ERROR_FILE_NOT_FOUND);

    const int priority = kel::LogFactory::getPriority();
    for (const kel::LogPriority level : {kel::LOG_DETAIL, kel::LOG_INFO}) {
        SCOPED_TRACE(level);
        log().clear();
        kel::LogFactory::setPriority(level);
        kel::Array<CaptureDevice> devices;
        CaptureDevice::enumerateDevices(devices);
        kel::LogFactory::setPriority(priority);

        const std::vector<const CaptureDevice *> tvCard = devicesOf(devices, kTvCardId);
        ASSERT_EQ(tvCard.size(), 1u);
        EXPECT_EQ(tvCard[0]->monikers().size(), 2);
        EXPECT_EQ(tvCard[0]->setupApiDevices().size(), 1);
        EXPECT_EQ(tvCard[0]->analogFilterName(), text(L"Own TV Card Capture"));
        EXPECT_EQ(tvCard[0]->digitalFilterName(), text(L"Own TV Card Tuner"));
        EXPECT_EQ(
            capabilityTexts(tvCard[0]->capabilities()),
            (std::vector<std::string>{"Analog Capture (None)", "Analog TVTuning (NTSC (M) 7.5 IRE black, PAL (B))",
                                      "Digital TVTuning (None)"}));

        const std::vector<const CaptureDevice *> splitCard = devicesOf(devices, kSplitCardId);
        ASSERT_EQ(splitCard.size(), 2u);
        EXPECT_EQ(splitCard[0]->name(), text(L"Own Split Card Capture"));
        EXPECT_EQ(splitCard[1]->name(), text(L"Own Split Card Tuner"));
        EXPECT_TRUE(splitCard[1]->analogFilterName().isEmpty());
        for (const CaptureDevice *device : splitCard) {
            ASSERT_EQ(device->setupApiDevices().size(), 1);
            EXPECT_EQ(device->setupApiDevices()[0].toString(), splitCard[0]->setupApiDevices()[0].toString());
            EXPECT_EQ(device->manufacturer(), text(L"Own Split Maker"));
            EXPECT_EQ(device->deviceType(), text(L"MEDIA"));
            EXPECT_EQ(device->subsysIdCode(), text(L"00031131"));
        }
        if (level == kel::LOG_DETAIL)
            EXPECT_EQ(log().find(text(L"Adding setupApiDevice to device:\n  Guid: ") + kSplitCardId).size(), 2u);
        else
            EXPECT_FALSE(log().contains(text(L"Adding setupApiDevice to device:")));
    }
}

// A webcam in the class Windows 10 gives USB video devices, which the merge does not search and
// whose name the library's classes do not hold.
const wchar_t kWindows10Camera[] =
    L"[webcam]\n"
    L"name = Own Windows Camera\n"
    L"path = \\\\?\\usb#vid_2bd9&pid_0011&mi_00#8&2f&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n"
    L"class = Camera\n"
    L"manufacturer = Own Camera Maker\n"
    L"format = YUY2 320x240 30\n";
const wchar_t kCameraId[] = L"USB\\VID_2BD9&PID_0011&MI_00\\8&2F&0&0000";

TEST_F(CaptureDeviceMergeTest, ACameraClassDeviceHasNoRecordInTheMerge)
{
    ScopedLabDevices camera(kWindows10Camera);
    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    const std::vector<const CaptureDevice *> found = devicesOf(devices, kCameraId);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]->name(), text(L"Own Windows Camera"));
    EXPECT_EQ(found[0]->setupApiDevices().size(), 0);
    EXPECT_EQ(found[0]->vendorIdCode(), text(L"2BD9"));
    EXPECT_TRUE(found[0]->deviceType().isEmpty());
    EXPECT_TRUE(found[0]->manufacturer().isEmpty());
}

// A device holding several records takes each fact from the first record that has it (a device
// type only from a record whose type the library knows), and its identity from a record before
// its monikers, whatever the monikers' paths say.
TEST_F(CaptureDeviceMergeTest, EachFactComesFromTheFirstRecordThatHasIt)
{
    ScopedLabDevices camera(kWindows10Camera);
    kel::Array<SetupApiDevice> records;
    ASSERT_TRUE(SetupApiDevice::enumerateDevicesWithTypes(records, SetupApiDevType::ALL(), SetupApiEnumType::ALL()));
    int index = 0;
    const SetupApiDevice *windowsCamera = findRecord(records, kCameraId, index);
    const SetupApiDevice *lifeCam = findRecord(records, L"USB\\VID_045E&PID_0772&MI_00\\7&2B3C&0&0000", index);
    ASSERT_NE(windowsCamera, nullptr);
    ASSERT_NE(lifeCam, nullptr);
    EXPECT_TRUE(windowsCamera->deviceType().isPlaceHolder());
    EXPECT_TRUE(windowsCamera->locationInfo().isEmpty());
    const CComPtr<IMoniker> system =
        sorvane::test::FaultyMoniker::systemMoniker(CLSID_VideoInputDeviceCategory, L"Lab Webcam RGB24");
    ASSERT_TRUE(system);
    DSMoniker moniker;
    moniker.create(system, CaptureStreamType::ANALOG(), 1);
    ASSERT_EQ(moniker.vendorIdCode(), text(L"046D"));

    CaptureDevice device;
    device.addMoniker(moniker);
    device.addSetupApiDevice(*windowsCamera);
    device.addSetupApiDevice(*lifeCam);
    EXPECT_EQ(device.name(), text(L"Lab Webcam RGB24"));
    EXPECT_EQ(device.guid(), moniker.guid());
    EXPECT_EQ(device.deviceInstanceId(), text(kCameraId));
    EXPECT_EQ(device.vendorIdCode(), text(L"2BD9"));
    EXPECT_EQ(device.deviceIdCode(), text(L"0011"));
    EXPECT_EQ(device.manufacturer(), text(L"Own Camera Maker"));
    EXPECT_EQ(device.driverProvider(), text(L"Own Camera Maker"));
    EXPECT_EQ(device.locationInfo(), text(L"Port_#0003.Hub_#0003"));
    EXPECT_EQ(device.deviceType(), text(L"IMAGE"));
}

} // namespace
