// Devices a test describes for itself: present as monikers and SetupAPI records for the scope
// and gone after it, the lab's own devices hidden on request and back afterwards.
#include <windows.h>
#include <dshow.h>
#include <setupapi.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DeviceInfoList.h"
#include "DriverInventory.h"
#include "LabGraph.h"
#include "lab/LabControl.h"
#include "lab/ScopedLabDevices.h"
#include "winesupport/WineSetupApi.h"

using lab::ScopedLabDevices;
using labtest::DeviceInfoList;

namespace {

const wchar_t kLabCamera[] = L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000";
const wchar_t kLabTvCard[] = L"PCI\\VEN_14F1&DEV_8800&SUBSYS_88010070&REV_05\\4&2F6A4BD6&0&2008";

std::wstring cameraPath(unsigned vendor, unsigned product, unsigned instance)
{
    wchar_t path[256] = {};
    swprintf(path, 256,
             L"\\\\?\\usb#vid_%04x&pid_%04x&mi_00#8&%x&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global", vendor,
             product, instance);
    return path;
}

std::wstring camera(const std::wstring &name, const std::wstring &path, const std::wstring &extra = L"")
{
    return L"[webcam]\nname = " + name + L"\npath = " + path + L"\nformat = YUY2 320x240 30\nprivacy = none\n" + extra;
}

std::vector<std::wstring> videoInputNames()
{
    std::vector<std::wstring> names;
    for (const labtest::MonikerInfo &device : labtest::listDevices(CLSID_VideoInputDeviceCategory))
        names.push_back(device.values.at(L"FriendlyName"));
    return names;
}

bool contains(const std::vector<std::wstring> &list, const std::wstring &item)
{
    for (const std::wstring &candidate : list) {
        if (_wcsicmp(candidate.c_str(), item.c_str()) == 0)
            return true;
    }
    return false;
}

std::wstring driverProvider(const DeviceInfoList &list, const std::wstring &instanceId)
{
    SP_DEVINFO_DATA device = {};
    if (!list.find(instanceId, device) || !SetupDiBuildDriverInfoList(list.handle(), &device, SPDIT_COMPATDRIVER))
        return L"";
    SP_DRVINFO_DATA_V2_W driver = {};
    driver.cbSize = sizeof(driver);
    if (!SetupDiEnumDriverInfoW(list.handle(), &device, SPDIT_COMPATDRIVER, 0,
                                reinterpret_cast<SP_DRVINFO_DATA_W *>(&driver)))
        return L"";
    return driver.ProviderName;
}

class LabScopedDevices : public testing::Test {
protected:
    static void SetUpTestSuite() { winesupport::fillWineSetupApiGaps(GetModuleHandleW(nullptr)); }
    void SetUp() override { m_liveObjects = LabLiveObjects(); }
    void TearDown() override { EXPECT_EQ(m_liveObjects, LabLiveObjects()); }

private:
    long m_liveObjects = 0;
};

TEST_F(LabScopedDevices, AddsItsDevicesForTheScopeAndRemovesExactlyThem)
{
    const std::vector<std::wstring> namesBefore = videoInputNames();
    const std::vector<std::wstring> camerasBefore = DeviceInfoList(labtest::kImageClass, L"USB").instanceIds();
    std::vector<std::wstring> infFiles;
    {
        const ScopedLabDevices devices(camera(L"Scoped Camera A", cameraPath(0x1234, 0x0001, 1),
                                              L"manufacturer = Scoped Optics\ndriver.provider = Scoped Drivers\n") +
                                       camera(L"Scoped Camera B", cameraPath(0x1234, 0x0002, 2)) +
                                       L"[webcam]\nname = Scoped Software Camera\nformat = YUY2 320x240 30\n"
                                       L"[headset]\nname = Scoped Headset\nmoniker = no\nmanufacturer = Scoped Audio\n"
                                       L"instance = USB\\VID_1234&PID_0003&MI_01\\8&3&0&0001\n");
        EXPECT_EQ((std::vector<std::wstring>{L"USB\\VID_1234&PID_0001&MI_00\\8&1&0&0000",
                                             L"USB\\VID_1234&PID_0002&MI_00\\8&2&0&0000",
                                             L"USB\\VID_1234&PID_0003&MI_01\\8&3&0&0001"}),
                  devices.instanceIds())
            << "the software camera has no hardware record";
        infFiles = devices.infFiles();
        ASSERT_EQ(3u, infFiles.size()) << "three manufacturers, three driver packages";
        EXPECT_TRUE(contains(DeviceInfoList(labtest::kMediaClass, L"USB").instanceIds(), devices.instanceIds()[2]))
            << "hardware without a capture filter is a MEDIA record only";

        const std::vector<std::wstring> names = videoInputNames();
        EXPECT_EQ(namesBefore.size() + 3, names.size());
        EXPECT_TRUE(contains(names, L"Scoped Camera A"));
        EXPECT_TRUE(contains(names, L"Scoped Software Camera"));
        CComPtr<IBaseFilter> filter;
        EXPECT_EQ(S_OK, labtest::bindDevice(L"Scoped Camera B", filter)) << "served like the lab's own cameras";

        const DeviceInfoList cameras(labtest::kImageClass, L"USB");
        EXPECT_EQ(camerasBefore.size() + 2, cameras.instanceIds().size());
        EXPECT_EQ(L"Scoped Drivers", driverProvider(cameras, devices.instanceIds()[0]));
        EXPECT_EQ(L"Sorvane Lab", driverProvider(cameras, devices.instanceIds()[1]));
        EXPECT_TRUE(contains(cameras.instanceIds(), kLabCamera));
    }
    EXPECT_EQ(namesBefore, videoInputNames());
    EXPECT_EQ(camerasBefore, DeviceInfoList(labtest::kImageClass, L"USB").instanceIds());
    for (const std::wstring &inf : infFiles)
        EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(inf.c_str())) << "driver package left behind";
}

TEST_F(LabScopedDevices, HidesTheLabsOwnDevicesForTheScope)
{
    const std::vector<std::wstring> namesBefore = videoInputNames();
    ASSERT_TRUE(contains(namesBefore, L"Lab Webcam RGB24"));
    {
        const ScopedLabDevices nothing(L"", ScopedLabDevices::LabDevices::Hidden);
        EXPECT_TRUE(videoInputNames().empty());
        EXPECT_FALSE(contains(DeviceInfoList(labtest::kImageClass, L"USB").instanceIds(), kLabCamera));
        EXPECT_FALSE(contains(DeviceInfoList(labtest::kMediaClass, L"PCI").instanceIds(), kLabTvCard));
        {
            const ScopedLabDevices one(camera(L"Only Camera", cameraPath(0x046d, 0x0825, 9)));
            EXPECT_EQ(std::vector<std::wstring>{L"Only Camera"}, videoInputNames());
            const DeviceInfoList cameras(labtest::kImageClass, L"USB");
            EXPECT_EQ(L"Sorvane Lab", driverProvider(cameras, one.instanceIds()[0]))
                << "the hidden Logitech package of the same hardware ID is out of the way";
        }
    }
    EXPECT_EQ(namesBefore, videoInputNames());
    EXPECT_TRUE(contains(DeviceInfoList(labtest::kImageClass, L"USB").instanceIds(), kLabCamera));
    const DeviceInfoList cards(labtest::kMediaClass, L"PCI");
    EXPECT_TRUE(contains(cards.instanceIds(), kLabTvCard));
    EXPECT_EQ(L"Hauppauge", driverProvider(cards, kLabTvCard));
}

TEST_F(LabScopedDevices, TwoFiltersOfOnePciCardAreOneRecord)
{
    const std::wstring path = L"\\\\?\\pci#ven_1131&dev_7160&subsys_12345678&rev_03#4&aa&0&0010#"
                              L"{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global";
    const ScopedLabDevices card(L"[analog-capture]\nname = Scoped Card Capture\npath = " + path +
                                L"\nformat = YUY2 640x480 30\ncrossbar-inputs = composite\n"
                                L"crossbar-outputs = video-decoder\nmanufacturer = Scoped Silicon\n"
                                L"location = PCI bus 7, device 0, function 0\n"
                                L"[analog-capture]\nname = Scoped Card Second Filter\npath = " +
                                path +
                                L"\nformat = YUY2 640x480 30\ncrossbar-inputs = composite\n"
                                L"crossbar-outputs = video-decoder\nmanufacturer = Ignored Second Maker\n");
    const std::wstring id = L"PCI\\VEN_1131&DEV_7160&SUBSYS_12345678&REV_03\\4&AA&0&0010";
    EXPECT_EQ(std::vector<std::wstring>{id}, card.instanceIds());
    const DeviceInfoList cards(labtest::kMediaClass, L"PCI");
    int records = 0;
    for (const std::wstring &found : cards.instanceIds())
        records += _wcsicmp(found.c_str(), id.c_str()) == 0;
    EXPECT_EQ(1, records);
    SP_DEVINFO_DATA device = {};
    ASSERT_TRUE(cards.find(id, device));
    std::wstring text;
    ASSERT_TRUE(cards.property(device, SPDRP_MFG, text));
    EXPECT_EQ(L"Scoped Silicon", text) << "the first section's value wins";
    ASSERT_TRUE(cards.property(device, SPDRP_HARDWAREID, text));
    EXPECT_EQ(L"PCI\\VEN_1131&DEV_7160&SUBSYS_12345678&REV_03", text);
    ASSERT_TRUE(cards.property(device, SPDRP_DEVICEDESC, text));
    EXPECT_EQ(L"Scoped Card Capture", text);
}

TEST_F(LabScopedDevices, ThreeHundredCamerasComeAndGo)
{
    const size_t before = videoInputNames().size();
    std::wstring description;
    for (unsigned i = 0; i < 300; ++i)
        description += camera(L"Many Camera " + std::to_wstring(i), cameraPath(0x2000, i, i));
    {
        const ScopedLabDevices many(description);
        EXPECT_EQ(300u, many.instanceIds().size());
        EXPECT_EQ(1u, many.infFiles().size()) << "one manufacturer, one driver package";
        EXPECT_EQ(before + 300, videoInputNames().size());
    }
    EXPECT_EQ(before, videoInputNames().size());
}

TEST_F(LabScopedDevices, RefusesMistakesAndLeavesTheLabAsItWas)
{
    const std::vector<std::wstring> namesBefore = videoInputNames();
    EXPECT_THROW(ScopedLabDevices(camera(L"Lab Webcam RGB24", cameraPath(0x3000, 1, 1))), std::runtime_error)
        << "a lab device is never replaced";
    EXPECT_THROW(
        ScopedLabDevices(camera(L"Fresh Camera", cameraPath(0x3000, 2, 2)) +
                         camera(L"Clashing Camera", L"\\\\?\\usb#vid_046d&pid_0825&mi_00#7&1a2b&0&0000#{x}\\global")),
        std::runtime_error)
        << "nor a lab record";
    EXPECT_THROW(ScopedLabDevices(camera(L"Bad Date", cameraPath(0x3000, 3, 3), L"driver.date = 2015-04-06\n")),
                 std::runtime_error);
    EXPECT_THROW(ScopedLabDevices(L"no section\n"), std::runtime_error);
    EXPECT_EQ(namesBefore, videoInputNames());
    EXPECT_TRUE(contains(DeviceInfoList(labtest::kImageClass, L"USB").instanceIds(), kLabCamera));
}

TEST_F(LabScopedDevices, ADriverPackageMayCopyNoFile)
{
    const ScopedLabDevices card(L"[analog-capture]\nname = Scoped Card Without Files\nformat = YUY2 640x480 30\n"
                                L"path = \\\\?\\pci#ven_fffd&dev_0001&subsys_00000000&rev_01#4&5&0&0005#"
                                L"{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\ndriver.file = none\n"
                                L"driver.provider = Scoped Drivers\n");
    const DeviceInfoList cards(labtest::kMediaClass, L"PCI");
    SP_DEVINFO_DATA device = {};
    ASSERT_TRUE(cards.find(card.instanceIds().at(0), device));
    labtest::DriverFacts facts;
    ASSERT_TRUE(labtest::readDriver(cards.handle(), device, facts)) << GetLastError();
    EXPECT_STREQ(L"Scoped Drivers", facts.info.ProviderName);
    EXPECT_TRUE(facts.files.empty());
}

} // namespace
