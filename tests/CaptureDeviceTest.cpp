// Capture devices end to end on the lab: one device per piece of capture hardware, named by
// its moniker, identified by SetupAPI where it has a record and by its device path otherwise;
// SetupAPI enumeration by class and enumerator.
#include "LabTest.h"

#include <CaptureDevice.h>
#include <SetupApiDevice.h>
#include <kel/LogFactory.h>
#include <lab/LabControl.h>
#include <setupapi/ImportTable.h>

#include <setupapi.h>
#include <string>
#include <vector>

namespace {

using sorvane::CaptureBusType;
using sorvane::CaptureCapability;
using sorvane::CaptureDevice;
using sorvane::SetupApiDevice;
using sorvane::SetupApiDevType;
using sorvane::SetupApiEnumType;

kel::String text(const wchar_t *value)
{
    return kel::String(value);
}

const CaptureDevice *findByName(const kel::Array<CaptureDevice> &devices, const wchar_t *name)
{
    for (const CaptureDevice &device : devices) {
        if (device.name() == text(name))
            return &device;
    }
    return nullptr;
}

int countNamed(const kel::Array<CaptureDevice> &devices, const wchar_t *name)
{
    int count = 0;
    for (const CaptureDevice &device : devices)
        count += device.name() == text(name) ? 1 : 0;
    return count;
}

std::vector<std::string> capabilityTexts(const kel::Array<CaptureCapability> &capabilities)
{
    std::vector<std::string> texts;
    for (const CaptureCapability &capability : capabilities)
        texts.push_back(capability.toString().toUtf8());
    return texts;
}

class CaptureDeviceTest : public sorvane::test::ComLabTest {};

TEST_F(CaptureDeviceTest, EveryLabCaptureDeviceIsOneDeviceNamedByItsMoniker)
{
    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    ASSERT_GE(devices.size(), 10);
    for (const wchar_t *name :
         {L"Lab Webcam RGB24", L"Lab Webcam MJPG", L"Lab Analog TV Tuner", L"Lab Analog Capture Card"})
        EXPECT_EQ(countNamed(devices, name), 1) << kel::String(name).toUtf8();

    const CaptureDevice *webcam = findByName(devices, L"Lab Webcam RGB24");
    ASSERT_NE(webcam, nullptr);
    EXPECT_EQ(webcam->guid(), text(L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000\\"
                                   L"{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL"));
    EXPECT_EQ(webcam->deviceInstanceId(), text(L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000"));
    EXPECT_EQ(webcam->vendorIdCode(), text(L"046D"));
    EXPECT_EQ(webcam->deviceIdCode(), text(L"0825"));
    EXPECT_EQ(webcam->analogFilterName(), text(L"Lab Webcam RGB24"));
    EXPECT_TRUE(webcam->digitalFilterName().isEmpty());
    EXPECT_TRUE(webcam->analogFilterDriverName().toLower().endsWith(text(L"sorvanelab.dll")));
    EXPECT_EQ(capabilityTexts(webcam->capabilities()),
              (std::vector<std::string>{"Analog Capture (None)", "Analog WebCamControl (None)"}));

    const CaptureDevice *card = findByName(devices, L"Lab Analog TV Tuner");
    ASSERT_NE(card, nullptr);
    EXPECT_EQ(card->deviceInstanceId(), text(L"PCI\\VEN_14F1&DEV_8800&SUBSYS_88010070&REV_05\\4&2F6A4BD6&0&2008"));
    EXPECT_EQ(card->subsysIdCode(), text(L"88010070"));
    EXPECT_EQ(card->revIdCode(), text(L"05"));
    EXPECT_EQ(capabilityTexts(card->capabilities()),
              (std::vector<std::string>{"Analog Capture (None)",
                                        "Analog TVTuning (NTSC (M) 7.5 IRE black, PAL (B), SECAM (L))"}));

    const std::string formatted = card->toFormattedString(text(L"  ")).toUtf8();
    EXPECT_NE(formatted.find("  Name: Lab Analog TV Tuner\n"), std::string::npos) << formatted;
    EXPECT_NE(formatted.find("  Monikers:\n      Guid: PCI\\VEN_14F1"), std::string::npos) << formatted;
    EXPECT_TRUE(log().contains(text(L"Enumerated Devices:\n")));
}

// Identity and driver facts come from SetupAPI's IMAGE/USB pass, the name from the moniker even
// where the record's own name differs.
TEST_F(CaptureDeviceTest, AWebcamTakesItsDriverFactsFromSetupApi)
{
    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    const CaptureDevice *webcam = findByName(devices, L"Lab Webcam YUY2");
    ASSERT_NE(webcam, nullptr);
    ASSERT_EQ(webcam->setupApiDevices().size(), 1);
    const SetupApiDevice &record = webcam->setupApiDevices()[0];
    EXPECT_EQ(record.name(), text(L"Microsoft LifeCam Studio"));
    EXPECT_EQ(record.deviceType(), SetupApiDevType::IMAGE());
    EXPECT_EQ(record.enumeratorType(), SetupApiEnumType::USB());
    EXPECT_EQ(record.guid(), record.deviceInstanceId());
    EXPECT_EQ(webcam->deviceInstanceId(), text(L"USB\\VID_045E&PID_0772&MI_00\\7&2B3C&0&0000"));
    EXPECT_EQ(webcam->manufacturer(), text(L"Microsoft"));
    EXPECT_EQ(webcam->locationInfo(), text(L"Port_#0003.Hub_#0003"));
    EXPECT_EQ(webcam->driverProvider(), text(L"Microsoft"));
    EXPECT_EQ(webcam->driverVersion(), text(L"10.0.19041.1202"));
    EXPECT_FALSE(webcam->driverDate().isEmpty());
    EXPECT_TRUE(webcam->driverName().toLower().endsWith(text(L"\\usbvideo.sys"))) << webcam->driverName().toUtf8();
    EXPECT_TRUE(webcam->driverInfFile().toLower().endsWith(text(L".inf"))) << webcam->driverInfFile().toUtf8();
    EXPECT_EQ(webcam->deviceType(), text(L"IMAGE"));
    EXPECT_EQ(webcam->name(), text(L"Lab Webcam YUY2"));
}

const SetupApiDevice *findRecord(const kel::Array<SetupApiDevice> &records, const wchar_t *instanceId)
{
    for (const SetupApiDevice &record : records) {
        if (record.deviceInstanceId() == text(instanceId))
            return &record;
    }
    return nullptr;
}

// Every class and every enumerator: Wine's own devices, which match no driver, come along with
// the lab's, whose driver facts are read as in a single class.
TEST_F(CaptureDeviceTest, AllClassesAndAllEnumeratorsHoldTheLabDevicesWithTheirDrivers)
{
    kel::Array<SetupApiDevice> records;
    ASSERT_TRUE(SetupApiDevice::enumerateDevicesWithTypes(records, SetupApiDevType::ALL(), SetupApiEnumType::ALL()));
    EXPECT_TRUE(log().contains(text(L"116 Enumerating Devices with Type ALL : ALL")));
    // A device with no installed driver (Wine's own) has an empty list, and its details are refused.
    EXPECT_TRUE(log().contains(text(L"467 SetupDiEnumDriverInfo: 259")));
    EXPECT_TRUE(log().contains(text(L"536 SetupDiGetDriverInfoDetail: 87")));

    const SetupApiDevice *webcam = findRecord(records, L"USB\\VID_045E&PID_0772&MI_00\\7&2B3C&0&0000");
    ASSERT_NE(webcam, nullptr);
    EXPECT_EQ(webcam->name(), text(L"Microsoft LifeCam Studio"));
    EXPECT_EQ(webcam->driverProvider(), text(L"Microsoft"));
    EXPECT_EQ(webcam->driverVersion(), text(L"10.0.19041.1202"));
    EXPECT_FALSE(webcam->driverDate().isEmpty());
    EXPECT_TRUE(webcam->driverInfFile().toLower().endsWith(text(L".inf"))) << webcam->driverInfFile().toUtf8();

    // Asked for every class and enumerator, a record takes the ones the device reports.
    EXPECT_EQ(webcam->deviceType(), SetupApiDevType::IMAGE());
    EXPECT_EQ(webcam->enumeratorType(), SetupApiEnumType::USB());
    EXPECT_TRUE(log().contains(text(L"470 Found driver info")));

    // Without a friendly name the device description names the device; the driver's date is
    // the user's short date.
    const SetupApiDevice *camera = findRecord(records, L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000");
    ASSERT_NE(camera, nullptr);
    EXPECT_EQ(camera->name(), text(L"Logitech HD Webcam C270"));
    EXPECT_TRUE(log().contains(text(L"406 SetupApiProperty: DescName: Logitech HD Webcam C270")));
    SYSTEMTIME date = {};
    date.wYear = 2015;
    date.wMonth = 4;
    date.wDay = 6;
    wchar_t shortDate[64] = L"";
    ASSERT_GT(GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, shortDate, 64), 0);
    EXPECT_EQ(camera->driverDate(), text(shortDate));
    EXPECT_EQ(camera->driverVersion(), text(L"13.80.853.0"));

    const SetupApiDevice *tuner =
        findRecord(records, L"PCI\\VEN_14F1&DEV_8800&SUBSYS_88010070&REV_05\\4&2F6A4BD6&0&2008");
    ASSERT_NE(tuner, nullptr);
    EXPECT_EQ(tuner->deviceType(), SetupApiDevType::MEDIA());
    EXPECT_EQ(tuner->enumeratorType(), SetupApiEnumType::PCI());
    EXPECT_FALSE(tuner->driverProvider().isEmpty());
    EXPECT_FALSE(tuner->driverVersion().isEmpty());
    EXPECT_TRUE(tuner->driverInfFile().toLower().endsWith(text(L".inf"))) << tuner->driverInfFile().toUtf8();
}

// Ordinary users log less than detail: the merge then looks records up by instance ID instead of
// walking (and logging) every device, and must give the same devices.
TEST_F(CaptureDeviceTest, TheMergeGivesTheSameDevicesWhateverIsLogged)
{
    kel::Array<CaptureDevice> logged;
    CaptureDevice::enumerateDevices(logged);
    ASSERT_TRUE(log().contains(text(L"deviceInstanceId match")));
    // Media devices on PCI, then on USB, then imaging devices on PCI, then on USB.
    std::vector<std::string> passes;
    for (const sorvane::test::LogCapture::Line &line : log().find(text(L"116 Enumerating Devices with Type ")))
        passes.push_back(line.message.toUtf8());
    EXPECT_EQ(passes, (std::vector<std::string>{"116 Enumerating Devices with Type MEDIA : PCI",
                                                "116 Enumerating Devices with Type MEDIA : USB",
                                                "116 Enumerating Devices with Type IMAGE : PCI",
                                                "116 Enumerating Devices with Type IMAGE : USB"}));

    const int priority = kel::LogFactory::getPriority();
    kel::LogFactory::setPriority(kel::LOG_INFO);
    kel::Array<CaptureDevice> quiet;
    CaptureDevice::enumerateDevices(quiet);
    kel::LogFactory::setPriority(priority);

    ASSERT_EQ(quiet.size(), logged.size());
    int withRecords = 0;
    for (int i = 0; i < quiet.size(); ++i) {
        SCOPED_TRACE(logged[i].name().toUtf8());
        EXPECT_EQ(quiet[i].guid(), logged[i].guid());
        EXPECT_EQ(quiet[i].monikers().size(), logged[i].monikers().size());
        ASSERT_EQ(quiet[i].setupApiDevices().size(), logged[i].setupApiDevices().size());
        for (int r = 0; r < quiet[i].setupApiDevices().size(); ++r)
            EXPECT_EQ(quiet[i].setupApiDevices()[r].toString(), logged[i].setupApiDevices()[r].toString());
        withRecords += quiet[i].setupApiDevices().isEmpty() ? 0 : 1;
    }
    // The lab's cameras and cards all have their SetupAPI record.
    EXPECT_GE(withRecords, 10);
}

TEST_F(CaptureDeviceTest, AnUnsetEnumeratorIsRefusedBeforeSetupApiIsAsked)
{
    kel::Array<SetupApiDevice> out;
    out.add(SetupApiDevice());
    EXPECT_FALSE(SetupApiDevice::enumerateDevicesWithTypes(out, SetupApiDevType::MEDIA(), SetupApiEnumType::NOTSET()));
    EXPECT_EQ(out.size(), 1);
    EXPECT_TRUE(log().contains(text(L"116 Enumerating Devices with Type MEDIA : NOTSET")));
    EXPECT_TRUE(log().contains(text(L"131 Invalid SetupApiEnumType: NOTSET PlaceHolder:")));
    EXPECT_FALSE(log().contains(text(L"135 SetupDiGetClassDevs failed")));
    EXPECT_FALSE(log().contains(text(L"Setup API Device ")));
}

TEST_F(CaptureDeviceTest, AnEmptyRecordPrintsEveryLabel)
{
    const SetupApiDevice empty;
    EXPECT_EQ(empty.toString(), text(L"Guid: , Device Instance Id: , Name: , Manufacturer: , Location Info: , "
                                     L"Driver Provider: , Driver Name: , Driver Date: , Driver Version: , "
                                     L"Driver INF File: , Vendor ID Code: , Device ID Code: , Sub System ID Code: , "
                                     L"Rev ID Code: "));
    const std::string formatted = empty.toFormattedString(text(L"- ")).toUtf8();
    EXPECT_EQ(formatted.find("- Guid: \n- Device Instance Id: \n- Name: \n"), 0u) << formatted;
    EXPECT_NE(formatted.find("\n- Rev ID Code: \n- Setup API Device Type: \n- Setup API Enumerator Type: "),
              std::string::npos)
        << formatted;

    // A device prints its records' own formatted text, not how many it has.
    kel::Array<CaptureDevice> devices;
    CaptureDevice::enumerateDevices(devices);
    const CaptureDevice *webcam = findByName(devices, L"Lab Webcam RGB24");
    ASSERT_NE(webcam, nullptr);
    ASSERT_EQ(webcam->monikers().size(), 1);
    ASSERT_FALSE(webcam->setupApiDevices().isEmpty());
    const std::string printed = webcam->toString().toUtf8();
    EXPECT_NE(printed.find(webcam->monikers()[0].toFormattedString(text(L"    ")).toUtf8()), std::string::npos);
    EXPECT_NE(printed.find(webcam->setupApiDevices()[0].toFormattedString(text(L"    ")).toUtf8()), std::string::npos);
    EXPECT_EQ(printed.find("Monikers: 1"), std::string::npos);

    const CaptureDevice none;
    EXPECT_NE(none.toString().toUtf8().find("Monikers:\n    None"), std::string::npos);
    EXPECT_TRUE(none.guid().isEmpty());
    EXPECT_TRUE(none.name().isEmpty());
    EXPECT_TRUE(none.deviceType().isEmpty());
    EXPECT_EQ(none.capabilities().size(), 0);
}

// The library's SetupDiGetDeviceInstanceIdW answered by the test for the life of a scope: a
// buffer smaller than `needed` characters is refused with ERROR_INSUFFICIENT_BUFFER and the size
// wanted, as for an instance ID longer than the buffer (no real ID is: Windows caps them at 200
// characters); a `refusal` other than that one is answered to every call. Larger buffers get
// the system's answer.
class InstanceIdAnswer {
public:
    InstanceIdAnswer(DWORD needed, DWORD refusal) : m_imports(GetModuleHandleW(L"libSorvane.dll"))
    {
        s_needed = needed;
        s_refusal = refusal;
        s_offered.clear();
        m_imports.redirect("setupapi.dll", "SetupDiGetDeviceInstanceIdW", reinterpret_cast<const void *>(&answer));
    }
    ~InstanceIdAnswer()
    {
        m_imports.redirect("setupapi.dll", "SetupDiGetDeviceInstanceIdW",
                           reinterpret_cast<const void *>(&SetupDiGetDeviceInstanceIdW));
    }

    // The buffer sizes offered, call by call.
    static const std::vector<DWORD> &offered() { return s_offered; }

private:
    static BOOL WINAPI answer(HDEVINFO set, PSP_DEVINFO_DATA data, PWSTR id, DWORD size, PDWORD required)
    {
        s_offered.push_back(size);
        if (s_refusal != ERROR_INSUFFICIENT_BUFFER) {
            SetLastError(s_refusal);
            return FALSE;
        }
        if (size < s_needed) {
            if (required)
                *required = s_needed == MAXDWORD ? size + 1 : s_needed;
            SetLastError(ERROR_INSUFFICIENT_BUFFER);
            return FALSE;
        }
        return SetupDiGetDeviceInstanceIdW(set, data, id, size, required);
    }

    static DWORD s_needed;
    static DWORD s_refusal;
    static std::vector<DWORD> s_offered;
    winesupport::ImportTable m_imports;
};

DWORD InstanceIdAnswer::s_needed = 0;
DWORD InstanceIdAnswer::s_refusal = ERROR_INSUFFICIENT_BUFFER;
std::vector<DWORD> InstanceIdAnswer::s_offered;

// The first buffer holds 1024 characters; a refusal for want of room is followed by a buffer of
// the size asked for, at most ten times; any other refusal ends the read.
TEST_F(CaptureDeviceTest, AnInstanceIdLongerThanTheBufferIsReadAgainInABufferOfItsSize)
{
    const struct {
        const char *name;
        DWORD needed;
        DWORD refusal;
        std::vector<DWORD> offered; // per device
        bool read;
    } cases[] = {
        {"one retry", 1500, ERROR_INSUFFICIENT_BUFFER, {1024, 1500}, true},
        {"ten retries",
         MAXDWORD,
         ERROR_INSUFFICIENT_BUFFER,
         {1024, 1025, 1026, 1027, 1028, 1029, 1030, 1031, 1032, 1033, 1034},
         false},
        {"another error", 0, ERROR_INVALID_USER_BUFFER, {1024}, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        log().clear();
        kel::Array<SetupApiDevice> records;
        std::vector<DWORD> offered;
        {
            InstanceIdAnswer answer(c.needed, c.refusal);
            SetupApiDevice::enumerateDevicesWithTypes(records, SetupApiDevType::IMAGE(), SetupApiEnumType::USB());
            offered = InstanceIdAnswer::offered();
        }
        ASSERT_GE(records.size(), 5);
        std::vector<DWORD> expected;
        for (int i = 0; i < records.size(); ++i)
            expected.insert(expected.end(), c.offered.begin(), c.offered.end());
        EXPECT_EQ(offered, expected);
        const SetupApiDevice *webcam = findRecord(records, L"USB\\VID_045E&PID_0772&MI_00\\7&2B3C&0&0000");
        EXPECT_EQ(webcam != nullptr, c.read);
        const size_t unread = log().find(text(L"166 Could not get device instance id")).size();
        EXPECT_EQ(unread, c.read ? 0u : static_cast<size_t>(records.size()));
        for (const SetupApiDevice &record : records) {
            EXPECT_EQ(record.deviceInstanceId().isEmpty(), !c.read);
            EXPECT_EQ(record.guid(), record.deviceInstanceId());
            // The other facts are read all the same.
            EXPECT_FALSE(record.name().isEmpty());
        }
    }
}

} // namespace
