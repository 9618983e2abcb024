// The lab's hardware as Windows code meets it through SetupAPI: found by setup class and
// enumerator with the properties real devices have, and, with Wine's gaps filled in this
// program's import table, the driver facts of the INF and the driver's files queued, not copied.
#include <windows.h>
#include <setupapi.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DeviceInfoList.h"
#include "DriverInventory.h"
#include "winesupport/WineSetupApi.h"

using labtest::DeviceInfoList;
using labtest::DriverFacts;

namespace {

const wchar_t kLogitechCamera[] = L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000";
const wchar_t kLifeCam[] = L"USB\\VID_045E&PID_0772&MI_00\\7&2B3C&0&0000";
const wchar_t kTvCard[] = L"PCI\\VEN_14F1&DEV_8800&SUBSYS_88010070&REV_05\\4&2F6A4BD6&0&2008";
const wchar_t kCaptureCard[] = L"PCI\\VEN_109E&DEV_036E&SUBSYS_00000000&REV_11\\4&1C3B8E1&0&3008";

bool contains(const std::vector<std::wstring> &ids, const std::wstring &id)
{
    for (const std::wstring &candidate : ids) {
        if (_wcsicmp(candidate.c_str(), id.c_str()) == 0)
            return true;
    }
    return false;
}

std::wstring lower(std::wstring text)
{
    for (wchar_t &c : text)
        c = static_cast<wchar_t>(towlower(c));
    return text;
}

void readDriver(const DeviceInfoList &list, SP_DEVINFO_DATA &device, DriverFacts &facts)
{
    ASSERT_TRUE(labtest::readDriver(list.handle(), device, facts)) << GetLastError();
}

SYSTEMTIME day(const FILETIME &time)
{
    SYSTEMTIME result = {};
    FileTimeToSystemTime(&time, &result);
    return result;
}

class LabSetupApi : public testing::Test {
protected:
    static void SetUpTestSuite() { winesupport::fillWineSetupApiGaps(GetModuleHandleW(nullptr)); }
};

TEST_F(LabSetupApi, ClassAndEnumeratorFindTheLabHardwareWithItsProperties)
{
    const std::vector<std::wstring> cameras = DeviceInfoList(labtest::kImageClass, L"USB").instanceIds();
    EXPECT_TRUE(contains(cameras, kLogitechCamera));
    EXPECT_TRUE(contains(cameras, kLifeCam));
    EXPECT_FALSE(contains(cameras, kTvCard));
    const std::vector<std::wstring> cards = DeviceInfoList(labtest::kMediaClass, L"PCI").instanceIds();
    EXPECT_TRUE(contains(cards, kTvCard));
    EXPECT_TRUE(contains(cards, kCaptureCard));
    EXPECT_FALSE(contains(cards, kLogitechCamera));
    EXPECT_FALSE(contains(DeviceInfoList(labtest::kImageClass, L"PCI").instanceIds(), kTvCard));
    EXPECT_FALSE(contains(DeviceInfoList(labtest::kMediaClass, L"USB").instanceIds(), kLogitechCamera));

    const DeviceInfoList list(labtest::kImageClass, L"USB");
    SP_DEVINFO_DATA device = {};
    ASSERT_TRUE(list.find(kLogitechCamera, device));
    std::wstring text;
    EXPECT_FALSE(list.property(device, SPDRP_FRIENDLYNAME, text)) << "most cameras have no friendly name";
    ASSERT_TRUE(list.property(device, SPDRP_DEVICEDESC, text));
    EXPECT_EQ(L"Logitech HD Webcam C270", text);
    ASSERT_TRUE(list.property(device, SPDRP_MFG, text));
    EXPECT_EQ(L"Logitech", text);
    ASSERT_TRUE(list.property(device, SPDRP_LOCATION_INFORMATION, text));
    EXPECT_EQ(L"Port_#0001.Hub_#0003", text);
    ASSERT_TRUE(list.property(device, SPDRP_CLASS, text));
    EXPECT_EQ(L"Image", text);
    ASSERT_TRUE(list.property(device, SPDRP_HARDWAREID, text));
    EXPECT_EQ(L"USB\\VID_046D&PID_0825&MI_00", text);
    ASSERT_TRUE(list.property(device, SPDRP_DRIVER, text));
    EXPECT_EQ(0u, text.find(L"{6bdd1fc6-810f-11d0-bec7-08002be2092f}\\")) << text;
    ASSERT_TRUE(list.find(kLifeCam, device));
    ASSERT_TRUE(list.property(device, SPDRP_FRIENDLYNAME, text));
    EXPECT_EQ(L"Microsoft LifeCam Studio", text);
}

TEST_F(LabSetupApi, EnumeratorNameComesFromTheInstanceIdWithTheUsualSizeRules)
{
    const DeviceInfoList cameras(labtest::kImageClass, L"USB");
    SP_DEVINFO_DATA device = {};
    ASSERT_TRUE(cameras.find(kLogitechCamera, device));
    DWORD type = 0;
    DWORD required = 0;
    SetLastError(0);
    EXPECT_FALSE(SetupDiGetDeviceRegistryPropertyW(cameras.handle(), &device, SPDRP_ENUMERATOR_NAME, &type, nullptr, 0,
                                                   &required));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());
    EXPECT_EQ(4 * sizeof(wchar_t), required);
    std::wstring text;
    ASSERT_TRUE(cameras.property(device, SPDRP_ENUMERATOR_NAME, text));
    EXPECT_EQ(L"USB", text);
    EXPECT_EQ(static_cast<DWORD>(REG_SZ), type);

    const DeviceInfoList cards(labtest::kMediaClass, L"PCI");
    ASSERT_TRUE(cards.find(kTvCard, device));
    ASSERT_TRUE(cards.property(device, SPDRP_ENUMERATOR_NAME, text));
    EXPECT_EQ(L"PCI", text);
    ASSERT_TRUE(cards.property(device, SPDRP_MFG, text)) << "other properties still reach SetupAPI";
    EXPECT_EQ(L"Hauppauge", text);
}

TEST_F(LabSetupApi, DriverFactsComeFromTheInfAndItsFilesAreQueuedNotCopied)
{
    const DeviceInfoList cameras(labtest::kImageClass, L"USB");
    SP_DEVINFO_DATA device = {};
    ASSERT_TRUE(cameras.find(kLogitechCamera, device));
    DriverFacts camera;
    readDriver(cameras, device, camera);
    EXPECT_STREQ(L"Logitech", camera.info.ProviderName);
    EXPECT_STREQ(L"Logitech", camera.info.MfgName);
    EXPECT_STREQ(L"Logitech HD Webcam C270", camera.info.Description);
    EXPECT_EQ((13ull << 48) | (80ull << 32) | (853ull << 16), camera.info.DriverVersion);
    const SYSTEMTIME date = day(camera.info.DriverDate);
    EXPECT_EQ(2015, date.wYear);
    EXPECT_EQ(4, date.wMonth);
    EXPECT_EQ(6, date.wDay);
    EXPECT_EQ(0u, lower(camera.infFile).find(L"c:\\windows\\inf\\oem")) << camera.infFile;
    ASSERT_EQ(1u, camera.files.size());
    EXPECT_EQ(L"c:\\windows\\system32\\drivers\\lvuvc64.sys", lower(camera.files[0]));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(camera.files[0].c_str())) << "queued, not copied";

    SP_DRVINFO_DATA_V2_W selected = {};
    selected.cbSize = sizeof(selected);
    ASSERT_TRUE(SetupDiGetSelectedDriverW(cameras.handle(), &device, reinterpret_cast<SP_DRVINFO_DATA_W *>(&selected)));
    EXPECT_STREQ(camera.info.Description, selected.Description);
    EXPECT_EQ(camera.info.DriverVersion, selected.DriverVersion);

    const DeviceInfoList cards(labtest::kMediaClass, L"PCI");
    ASSERT_TRUE(cards.find(kTvCard, device));
    DriverFacts card;
    readDriver(cards, device, card);
    EXPECT_STREQ(L"Hauppauge", card.info.ProviderName);
    EXPECT_EQ((1ull << 48) | (15ull << 32) | (26204ull << 16), card.info.DriverVersion);
    EXPECT_EQ(2013, day(card.info.DriverDate).wYear);
    EXPECT_NE(camera.infFile, card.infFile);
    ASSERT_EQ(1u, card.files.size());
    EXPECT_EQ(L"c:\\windows\\system32\\drivers\\hcw88vid.sys", lower(card.files[0]));
}

TEST_F(LabSetupApi, CamerasOfOneDriverPackageShareItsInf)
{
    const DeviceInfoList cameras(labtest::kImageClass, L"USB");
    SP_DEVINFO_DATA device = {};
    DriverFacts c270;
    ASSERT_TRUE(cameras.find(kLogitechCamera, device));
    readDriver(cameras, device, c270);
    DriverFacts c920;
    ASSERT_TRUE(cameras.find(L"USB\\VID_046D&PID_0892&MI_00\\7&6F70&0&0000", device));
    readDriver(cameras, device, c920);
    EXPECT_EQ(c270.infFile, c920.infFile);
    EXPECT_STREQ(L"Logitech HD Pro Webcam C920", c920.info.Description);
    DriverFacts lifeCam;
    ASSERT_TRUE(cameras.find(kLifeCam, device));
    readDriver(cameras, device, lifeCam);
    EXPECT_NE(c270.infFile, lifeCam.infFile);
    EXPECT_STREQ(L"Microsoft", lifeCam.info.ProviderName);
    ASSERT_EQ(1u, lifeCam.files.size());
    EXPECT_EQ(L"c:\\windows\\system32\\drivers\\usbvideo.sys", lower(lifeCam.files[0]));
}

} // namespace
