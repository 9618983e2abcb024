// DirectShow monikers end to end: the lab's video inputs with their identities and probed
// capabilities, and monikers of a category of the test's own for the cases the lab's
// description does not hold (software filters, OpenCable receivers, a crowded category).
#include "AssertionCatcher.h"
#include "FaultyMoniker.h"
#include "LabTest.h"
#include "RefusedClass.h"
#include "ScopedMonikers.h"

#include <DSMoniker.h>
#include <ErrorHandler.h>
#include <SdkGuids.h>
#include <lab/LabControl.h>
#include <lab/ScopedLabDevices.h>

#include <atlbase.h>
#include <dshow.h>
#include <tuner.h>
#include <algorithm>
#include <memory>
#include <string>

namespace {

using sorvane::CaptureBusType;
using sorvane::CaptureCapability;
using sorvane::CaptureStreamType;
using sorvane::DSMoniker;
using sorvane::ErrorHandler;
using sorvane::test::FaultyMoniker;
using sorvane::test::RefusedClass;
using sorvane::test::ScopedMonikers;

// A device category nobody but this program publishes in.
const GUID kOwnCategory = {0x7e57ca7e, 0x5017, 0x4a4e, {0x9d, 0x1c, 0x00, 0x00, 0x00, 0x00, 0x05, 0x04}};

kel::String text(const wchar_t *value)
{
    return kel::String(value);
}

std::wstring numbered(const wchar_t *prefix, int n)
{
    std::wstring digits = std::to_wstring(n);
    while (digits.size() < 3)
        digits.insert(digits.begin(), L'0');
    return prefix + digits;
}

const DSMoniker *findByName(const kel::Array<DSMoniker> &monikers, const wchar_t *name)
{
    for (const DSMoniker &moniker : monikers) {
        if (moniker.filterName() == text(name))
            return &moniker;
    }
    return nullptr;
}

std::vector<std::string> capabilityTexts(const DSMoniker &moniker)
{
    std::vector<std::string> texts;
    for (const CaptureCapability &capability : moniker.capabilities())
        texts.push_back(capability.toString().toUtf8());
    return texts;
}

// How many references `object` holds now.
ULONG referencesOf(IUnknown *object)
{
    object->AddRef();
    return object->Release();
}

const wchar_t kWebcamPath[] =
    L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000\\{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL";

class DSMonikerTest : public sorvane::test::ComLabTest {
protected:
    // The monikers of the test's own category, read as `typeName` (Analog and Digital probe
    // the filters; any other name does not).
    kel::Array<DSMoniker> ownMonikers(const wchar_t *typeName)
    {
        const CaptureStreamType type(text(typeName), &kOwnCategory, false);
        CComPtr<ICreateDevEnum> devices;
        EXPECT_HRESULT_SUCCEEDED(devices.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER));
        kel::Array<DSMoniker> found;
        if (devices)
            DSMoniker::enumerateMonikersOfType(type, devices, found);
        return found;
    }

    ScopedMonikers own{kOwnCategory};
};

TEST_F(DSMonikerTest, LabVideoInputsCarryTheirPathIdentityAndProbedCapabilities)
{
    lab::DeviceOverride tuner(L"Lab Analog TV Tuner", L"tv-formats", L"NTSC_M, PAL_B, PAL_G");
    kel::Array<DSMoniker> monikers;
    DSMoniker::enumerateMonikers(monikers, CaptureStreamType::ANALOG());
    ASSERT_GE(monikers.size(), 10);
    for (int i = 0; i < monikers.size(); ++i) {
        EXPECT_EQ(monikers[i].enumIndex(), i + 1);
        EXPECT_EQ(monikers[i].captureStreamType(), CaptureStreamType::ANALOG());
    }

    const DSMoniker *webcam = findByName(monikers, L"Lab Webcam RGB24");
    ASSERT_NE(webcam, nullptr);
    EXPECT_EQ(webcam->guid(), text(L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000\\"
                                   L"{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL"));
    EXPECT_EQ(webcam->deviceInstanceId(), text(L"USB\\VID_046D&PID_0825&MI_00\\7&1A2B&0&0000"));
    EXPECT_EQ(webcam->vendorIdCode(), text(L"046D"));
    EXPECT_EQ(webcam->deviceIdCode(), text(L"0825"));
    EXPECT_TRUE(webcam->subsysIdCode().isEmpty());
    EXPECT_EQ(webcam->busType(), CaptureBusType::USB());
    EXPECT_EQ(webcam->description(), text(L"Lab USB camera, RGB24 bottom-up, privacy shutter"));
    EXPECT_TRUE(webcam->filterDriverName().toLower().endsWith(text(L"sorvanelab.dll")))
        << webcam->filterDriverName().toUtf8();
    EXPECT_TRUE(webcam->monikerName().startsWith(text(L"@device:")));
    EXPECT_EQ(capabilityTexts(*webcam),
              (std::vector<std::string>{"Analog Capture (None)", "Analog WebCamControl (None)"}));

    const DSMoniker *noControl = findByName(monikers, L"Lab Webcam RGB24 Top-Down");
    ASSERT_NE(noControl, nullptr);
    EXPECT_EQ(capabilityTexts(*noControl), (std::vector<std::string>{"Analog Capture (None)"}));

    // PAL (G) has no standard of its own and is dropped.
    const DSMoniker *card = findByName(monikers, L"Lab Analog TV Tuner");
    ASSERT_NE(card, nullptr);
    EXPECT_EQ(card->deviceInstanceId(), text(L"PCI\\VEN_14F1&DEV_8800&SUBSYS_88010070&REV_05\\4&2F6A4BD6&0&2008"));
    EXPECT_EQ(card->busType(), CaptureBusType::PCI());
    EXPECT_EQ(card->subsysIdCode(), text(L"88010070"));
    EXPECT_EQ(card->revIdCode(), text(L"05"));
    EXPECT_EQ(capabilityTexts(*card),
              (std::vector<std::string>{"Analog Capture (None)", "Analog TVTuning (NTSC (M) 7.5 IRE black, PAL (B))"}));

    // Each record is logged under its position.
    EXPECT_TRUE(log().contains(text(L"160 DirectShow Analog Moniker 1:")));
    EXPECT_TRUE(log().contains(text(L"147 Finished enum loop")));
}

TEST_F(DSMonikerTest, BdaTunersAreProbedThroughTheAtscTuningSpace)
{
    const std::wstring spaces = L"System Tuning Spaces";
    lab::clearJournal(spaces);
    kel::Array<DSMoniker> monikers;
    DSMoniker::enumerateMonikers(monikers, CaptureStreamType::DIGITAL());
    ASSERT_GE(monikers.size(), 2);
    for (int i = 0; i < monikers.size(); ++i) {
        EXPECT_EQ(monikers[i].enumIndex(), i + 1);
        EXPECT_EQ(monikers[i].captureStreamType(), CaptureStreamType::DIGITAL());
    }
    const DSMoniker *tuner = findByName(monikers, L"Lab ATSC QAM Tuner");
    ASSERT_NE(tuner, nullptr);
    EXPECT_EQ(tuner->deviceInstanceId(), text(L"PCI\\VEN_14F1&DEV_8852&SUBSYS_D0120070&REV_04\\4&3A1B2C3D&0&00E1"));
    EXPECT_EQ(tuner->busType(), CaptureBusType::PCI());
    EXPECT_EQ(capabilityTexts(*tuner), (std::vector<std::string>{"Digital TVTuning (None)"}));
    EXPECT_TRUE(log().contains(text(L" append capability Digital TVTuning (None)")));
    const std::vector<std::wstring> asked = lab::journal(spaces);
    EXPECT_NE(std::find(asked.begin(), asked.end(), L"Item ATSC found"), asked.end());

    const DSMoniker *openCable = findByName(monikers, L"Lab OpenCable Tuner");
    ASSERT_NE(openCable, nullptr);
    EXPECT_EQ(capabilityTexts(*openCable), (std::vector<std::string>{"Digital TVTuning (None)"}));
}

TEST_F(DSMonikerTest, WithoutAnAtscTuningSpaceNoTunerIsDigitalButOpenCableStill)
{
    lab::DeviceOverride spaces(L"System Tuning Spaces", L"spaces", L"DVB-T");
    kel::Array<DSMoniker> monikers;
    DSMoniker::enumerateMonikers(monikers, CaptureStreamType::DIGITAL());
    const DSMoniker *tuner = findByName(monikers, L"Lab ATSC QAM Tuner");
    ASSERT_NE(tuner, nullptr);
    EXPECT_EQ(tuner->capabilities().size(), 0);
    EXPECT_TRUE(log().contains(text(L"ITuningSpaceContainer::get_Item failed: ")));
    EXPECT_FALSE(log().contains(text(L" append capability ")));
    const DSMoniker *openCable = findByName(monikers, L"Lab OpenCable Tuner");
    ASSERT_NE(openCable, nullptr);
    EXPECT_EQ(capabilityTexts(*openCable), (std::vector<std::string>{"Digital TVTuning (None)"}));
}

TEST_F(DSMonikerTest, RecordsPrintEveryFieldWithTheBusTypeTwiceInTheFormattedText)
{
    kel::Array<DSMoniker> monikers;
    DSMoniker::enumerateMonikers(monikers, CaptureStreamType::ANALOG());
    const DSMoniker *card = findByName(monikers, L"Lab Analog TV Tuner");
    ASSERT_NE(card, nullptr);
    const std::string formatted = card->toFormattedString(text(L"> ")).toUtf8();
    EXPECT_NE(formatted.find("> Moniker Name: @device:"), std::string::npos) << formatted;
    EXPECT_NE(formatted.find("\n> Bus Type: PCI\n> Vendor ID Code: 14F1\n> Device ID Code: 8800\n"
                             "> Subsys ID Code: 88010070\n> Rev ID Code: 05\n> Bus Type: PCI\n"
                             "> Capture Type: Analog\n> Capabilities: Analog Capture (None)\n"
                             ">               Analog TVTuning ("),
              std::string::npos)
        << formatted;
    const std::string flat = card->toString().toUtf8();
    EXPECT_EQ(flat.find("Guid: PCI\\VEN_14F1&DEV_8800&SUBSYS_88010070&REV_05\\4&2F6A4BD6&0&2008\\"), 0u) << flat;
    EXPECT_NE(flat.find(", Rev ID Code: 05, Bus Type: PCI, Capture Type: Analog, Capabilities: Analog Capture (None), "
                        "Analog TVTuning ("),
              std::string::npos)
        << flat;
}

TEST_F(DSMonikerTest, AnEmptyCategoryAddsNothing)
{
    kel::Array<DSMoniker> found = ownMonikers(L"Analog");
    EXPECT_EQ(found.size(), 0);
    EXPECT_TRUE(log().contains(
        text(L"136 DirectShow Device Enumerator is null.  Usually means no devices of this type on the system.")));
}

// An unset stream type names no category; the null one the enumerator is then asked for is not
// empty under Wine, and each of its monikers stops at create's own check, the only hard stop
// (here caught and continued past).
TEST_F(DSMonikerTest, AnUnsetStreamTypeStopsOnlyAtCreate)
{
    sorvane::test::AssertionCatcher assertions;
    kel::Array<DSMoniker> found;
    DSMoniker::enumerateMonikers(found, CaptureStreamType::NOTSET());
    EXPECT_TRUE(log().contains(text(L"127 Enumerating NotSet Monikers")));
    EXPECT_EQ(static_cast<int>(assertions.assertions().size()), found.size());
    for (const sorvane::test::AssertionCatcher::Assertion &assertion : assertions.assertions()) {
        EXPECT_EQ(assertion.expression, "!type.isPlaceHolder()");
        EXPECT_NE(assertion.file.find("DSMoniker"), std::string::npos) << assertion.file;
    }
}

TEST_F(DSMonikerTest, SoftwareFiltersGetASyntheticIdentityByPosition)
{
    ASSERT_TRUE(own.add({L"Own Software Source A", L"", L"", L""}));
    ASSERT_TRUE(own.add({L"Own Software Source B", L"", L"", L""}));
    ASSERT_TRUE(
        own.add({L"Own USB Source", L"\\\\?\\usb#vid_1234&pid_5678#5&1#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global",
                 L"", L""}));
    const kel::Array<DSMoniker> found = ownMonikers(L"Analog");
    ASSERT_EQ(found.size(), 3);
    for (const DSMoniker &moniker : found) {
        if (!moniker.devicePath().isEmpty())
            continue;
        EXPECT_EQ(moniker.guid(), text(L"KELR\\Analog:") + kel::String::fromInt(moniker.enumIndex()));
        EXPECT_TRUE(moniker.deviceInstanceId().isEmpty());
        EXPECT_EQ(moniker.busType(), CaptureBusType::NOTSET());
        EXPECT_TRUE(
            log().contains(text(L"899 set m_guid to KELR\\Analog:") + kel::String::fromInt(moniker.enumIndex())));
    }
    const DSMoniker *usb = findByName(found, L"Own USB Source");
    ASSERT_NE(usb, nullptr);
    EXPECT_EQ(usb->deviceInstanceId(), text(L"USB\\VID_1234&PID_5678\\5&1"));
    // A filter whose server is not registered cannot be probed, and has no driver file.
    EXPECT_EQ(usb->capabilities().size(), 0);
    EXPECT_TRUE(usb->filterDriverName().isEmpty());
    EXPECT_TRUE(log().contains(text(L"RegOpenKey DevicePath: ")));
}

TEST_F(DSMonikerTest, AFilterWithoutClassOrServerPathHasNoDriverFile)
{
    // A class registered without its server's path.
    const wchar_t serverless[] = L"{5B1F3A7E-2C44-4D19-9E0B-7A6C3D2E1F08}";
    const std::wstring classKey = std::wstring(L"Software\\Classes\\CLSID\\") + serverless;
    HKEY server = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, (classKey + L"\\InprocServer32").c_str(), 0, nullptr, 0, KEY_WRITE,
                              nullptr, &server, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(server);
    const wchar_t path[] = L"\\\\?\\usb#vid_1234&pid_5679#5&2#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global";
    ASSERT_TRUE(own.add({L"Own Classless Source", path, ScopedMonikers::kNoClass, L""}));
    ASSERT_TRUE(own.add({L"Own Serverless Source", path, serverless, L""}));
    const kel::Array<DSMoniker> found = ownMonikers(L"Analog");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, classKey.c_str());

    const DSMoniker *classless = findByName(found, L"Own Classless Source");
    ASSERT_NE(classless, nullptr);
    EXPECT_TRUE(classless->clsid().isEmpty());
    EXPECT_TRUE(classless->filterDriverName().isEmpty());
    EXPECT_TRUE(log().contains(text(L"Get FilterDriverName failed due to empty CLSID")));
    const DSMoniker *unreadable = findByName(found, L"Own Serverless Source");
    ASSERT_NE(unreadable, nullptr);
    EXPECT_TRUE(unreadable->filterDriverName().isEmpty());
    EXPECT_TRUE(log().contains(text(L"RegQueryValueEx DevicePath failed: ")));
}

TEST_F(DSMonikerTest, OpenCableReceiversAreDigitalTunersWithoutAProbe)
{
    ASSERT_TRUE(own.add({L"Own opencable Receiver", L"\\\\?\\pci#ven_1111&dev_2222#1#{x}", L"", L""}));
    ASSERT_TRUE(own.add({L"Own BDA Tuner", L"\\\\?\\pci#ven_3333&dev_4444#1#{x}", L"", L""}));
    const kel::Array<DSMoniker> found = ownMonikers(L"Digital");
    const DSMoniker *receiver = findByName(found, L"Own opencable Receiver");
    ASSERT_NE(receiver, nullptr);
    EXPECT_EQ(capabilityTexts(*receiver), (std::vector<std::string>{"Digital TVTuning (None)"}));

    // The other filter is probed through the ATSC tuning space and, being no working tuner,
    // gets nothing; the probe says where it stopped.
    const DSMoniker *tuner = findByName(found, L"Own BDA Tuner");
    ASSERT_NE(tuner, nullptr);
    EXPECT_EQ(tuner->capabilities().size(), 0);
    CComPtr<ITuningSpaceContainer> spaces;
    if (FAILED(spaces.CoCreateInstance(CLSID_SystemTuningSpaces, nullptr, CLSCTX_INPROC_SERVER)))
        EXPECT_TRUE(log().contains(text(L"CoCreateInstance(CLSID_SystemTuningSpaces) failed: ")));
    else
        EXPECT_TRUE(log().contains(text(L"Failed to load the BDA network tuner filter")));
    EXPECT_FALSE(log().contains(text(L" append capability ")));
}

TEST_F(DSMonikerTest, ACategoryGivesAtMost256Records)
{
    for (int i = 1; i <= 300; ++i)
        ASSERT_TRUE(own.add({numbered(L"Own Source ", i), L"", L"", L""}));
    const kel::Array<DSMoniker> found = ownMonikers(L"Bulk");
    ASSERT_EQ(found.size(), DSMoniker::kMaxMonikersPerCategory);
    for (int i = 0; i < found.size(); ++i)
        EXPECT_EQ(found[i].enumIndex(), i + 1);
    EXPECT_EQ(found[255].guid(), text(L"KELR\\Bulk:256"));
    const std::vector<sorvane::test::LogCapture::Line> stop =
        log().find(text(L"Finished enum loop due to exceeded max devices"));
    ASSERT_EQ(stop.size(), 1u);
    EXPECT_EQ(stop[0].priority, kel::LOG_ERROR);
    EXPECT_TRUE(log().contains(text(L"Unknown capture stream type: Bulk")));
}

// The lab's RGB24 webcam through a moniker the test answers for: a refused call leaves its
// fields empty and the record goes on; a display name of the hardware form is read before the
// device path.
TEST_F(DSMonikerTest, AMonikerCallRefusedOrADisplayNameThatParses)
{
    const std::vector<std::string> webcamCapabilities = {"Analog Capture (None)", "Analog WebCamControl (None)"};
    const struct {
        const char *name;
        FaultyMoniker::Method refused;
        HRESULT refusal;
        const wchar_t *displayName;
        kel::String logged;
        const wchar_t *guid;
        const wchar_t *filterName;
        const wchar_t *vendor;
    } cases[] = {
        {"display name refused", FaultyMoniker::GET_DISPLAY_NAME, E_FAIL, L"",
         text(L"IMoniker::GetDisplayName: ") + ErrorHandler::errorMessageFromHr(E_FAIL) + L" failed:", kWebcamPath,
         L"Lab Webcam RGB24", L"046D"},
        {"property bag refused", FaultyMoniker::BIND_TO_STORAGE, E_ACCESSDENIED, L"",
         text(L"IMoniker::BindToStorage: ") + ErrorHandler::errorMessageFromHr(E_ACCESSDENIED) + L" failed: ",
         L"KELR\\Analog:7", L"", L""},
        {"hardware display name", FaultyMoniker::NONE, S_OK,
         L"@device:pnp:\\\\?\\usb#vid_1234&pid_abcd&mi_00#8&9&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global",
         text(L"Moniker Name: @device:pnp:\\\\?\\usb#vid_1234&pid_abcd"),
         L"USB\\VID_1234&PID_ABCD&MI_00\\8&9&0&0000\\{65E8773D-8F56-11D0-A3B9-00A0C9223196}\\GLOBAL",
         L"Lab Webcam RGB24", L"1234"},
    };
    const CComPtr<IMoniker> system = FaultyMoniker::systemMoniker(CLSID_VideoInputDeviceCategory, L"Lab Webcam RGB24");
    ASSERT_TRUE(system);
    const ULONG systemReferences = referencesOf(system);
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        log().clear();
        DSMoniker record;
        {
            const CComPtr<IMoniker> answered = FaultyMoniker::wrap(system, c.refused, c.refusal, c.displayName);
            record.create(answered, CaptureStreamType::ANALOG(), 7);
            EXPECT_EQ(referencesOf(answered), 1u);
        }
        EXPECT_EQ(referencesOf(system), systemReferences);
        EXPECT_TRUE(log().contains(c.logged)) << c.logged.toUtf8();
        EXPECT_EQ(record.guid(), text(c.guid));
        EXPECT_EQ(record.filterName(), text(c.filterName));
        EXPECT_EQ(record.vendorIdCode(), text(c.vendor));
        EXPECT_EQ(record.enumIndex(), 7);
        EXPECT_EQ(record.monikerName().isEmpty(), c.refused == FaultyMoniker::GET_DISPLAY_NAME);
        // Without the property bag no class, path or description, and so no driver file either.
        const bool bagRefused = c.refused == FaultyMoniker::BIND_TO_STORAGE;
        EXPECT_EQ(record.clsid().isEmpty(), bagRefused);
        EXPECT_EQ(record.devicePath().isEmpty(), bagRefused);
        EXPECT_EQ(record.description().isEmpty(), bagRefused);
        EXPECT_EQ(record.filterDriverName().isEmpty(), bagRefused);
        EXPECT_EQ(log().contains(text(L"Get FilterDriverName failed due to empty CLSID")), bagRefused);
        // Binding the filter is the moniker's own: the probe runs whatever was refused before.
        EXPECT_EQ(capabilityTexts(record), webcamCapabilities);
    }
}

// The TV tuner of the lab's card refusing the TV mode or its list of formats.
TEST_F(DSMonikerTest, ATunerRefusingTheModeOrTheFormats)
{
    const struct {
        const wchar_t *fault;
        std::vector<std::string> capabilities;
        const wchar_t *journalled;
        bool tuning;
    } cases[] = {
        {L"fault.put_Mode", {"Analog Capture (None)"}, L"Mode TV failed 0x80004005", false},
        {L"fault.get_AvailableTVFormats",
         {"Analog Capture (None)", "Analog TVTuning (None)"},
         L"AvailableTVFormats failed 0x80004005",
         true},
    };
    const wchar_t card[] = L"Lab Analog TV Tuner";
    const CComPtr<IMoniker> moniker = FaultyMoniker::systemMoniker(CLSID_VideoInputDeviceCategory, card);
    ASSERT_TRUE(moniker);
    for (const auto &c : cases) {
        SCOPED_TRACE(kel::String(c.fault).toUtf8());
        log().clear();
        lab::clearJournal(card);
        lab::DeviceOverride refuse(card, c.fault, L"0x80004005");
        DSMoniker record;
        record.create(moniker, CaptureStreamType::ANALOG(), 1);
        EXPECT_EQ(capabilityTexts(record), c.capabilities);
        EXPECT_TRUE(lab::journalHas(card, c.journalled));
        EXPECT_EQ(log().contains(text(L"Analog TV Tuning supported")), c.tuning);
    }
}

// A card whose tuner is a filter of its own, joined to the capture filter (published in the
// test's category) by a medium, as Windows' capture graph builder connects it above the capture
// filter; and a card whose medium leads to no tuner.
const wchar_t kCardsWithSeparateTuner[] = L"[tv-tuner]\n"
                                          L"name = Own Separate TV Tuner\n"
                                          L"medium = {5A1D0C44-7E2B-4F39-8B61-0C9E3A7D2F15}\n"
                                          L"tuner-modes = tv\n"
                                          L"tv-formats = NTSC_M, PAL_B, PAL_G\n"
                                          L"[analog-capture]\n"
                                          L"name = Own Card Above Its Tuner\n"
                                          L"category = {7E57CA7E-5017-4A4E-9D1C-000000000504}\n"
                                          L"format = YUY2 320x240 30\n"
                                          L"tuner.medium = {5A1D0C44-7E2B-4F39-8B61-0C9E3A7D2F15}\n"
                                          L"[analog-capture]\n"
                                          L"name = Own Card Without Its Tuner\n"
                                          L"category = {7E57CA7E-5017-4A4E-9D1C-000000000504}\n"
                                          L"format = YUY2 320x240 30\n"
                                          L"tuner.medium = {5A1D0C44-7E2B-4F39-8B61-0C9E3A7D2F16}\n";

// IAMTVTuner found on the capture filter itself or upstream of it gives the same TV tuning.
TEST_F(DSMonikerTest, TheTvTunerOnTheCaptureFilterOrUpstreamOfIt)
{
    const lab::ScopedLabDevices cards(kCardsWithSeparateTuner);
    lab::DeviceOverride formats(L"Lab Analog TV Tuner", L"tv-formats", L"NTSC_M, PAL_B, PAL_G");
    const std::vector<std::string> tvCard = {"Analog Capture (None)",
                                             "Analog TVTuning (NTSC (M) 7.5 IRE black, PAL (B))"};
    const struct {
        const GUID *category;
        const wchar_t *capture;
        const wchar_t *tuner;
        std::vector<std::string> capabilities;
        bool tuning;
    } cases[] = {
        {&CLSID_VideoInputDeviceCategory, L"Lab Analog TV Tuner", L"Lab Analog TV Tuner", tvCard, true},
        {&kOwnCategory, L"Own Card Above Its Tuner", L"Own Separate TV Tuner", tvCard, true},
        {&kOwnCategory, L"Own Card Without Its Tuner", L"Own Separate TV Tuner", {"Analog Capture (None)"}, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(kel::String(c.capture).toUtf8());
        log().clear();
        lab::clearJournal(c.tuner);
        const CComPtr<IMoniker> moniker = FaultyMoniker::systemMoniker(*c.category, c.capture);
        ASSERT_TRUE(moniker);
        DSMoniker record;
        record.create(moniker, CaptureStreamType::ANALOG(), 1);
        EXPECT_EQ(capabilityTexts(record), c.capabilities);
        EXPECT_EQ(lab::journalHas(c.tuner, L"Mode TV"), c.tuning);
        EXPECT_EQ(log().contains(text(L"Analog TV Tuning supported")), c.tuning);
    }
}

// Every step of the digital probe after the tuning space was found, refused in turn: each ends
// the probe without a capability, saying where. A row refuses through a lab fault, or refuses a
// COM class on the test's apartment as when Windows cannot load the component.
TEST_F(DSMonikerTest, TheDigitalProbeStopsAtTheFirstRefusedStep)
{
    const wchar_t tuner[] = L"Lab ATSC QAM Tuner";
    const wchar_t spaces[] = L"System Tuning Spaces";
    const wchar_t provider[] = L"Network Provider";
    const struct {
        const wchar_t *device;
        const wchar_t *fault;
        const wchar_t *value;
        const CLSID *refused;
        kel::String logged;
    } cases[] = {
        {spaces, L"fault.get_NetworkType", L"0x80004005", nullptr,
         text(L"ITuningSpace::get_NetworkType failed: ") + ErrorHandler::errorMessageFromHr(E_FAIL)},
        {spaces, L"fault.get_NetworkType.text", L"not a class ID", nullptr,
         text(L"CLSIDFromString failed: ") + ErrorHandler::errorMessageFromHr(CO_E_CLASSSTRING)},
        {nullptr, L"ATSC network provider not registered", nullptr, &CLSID_ATSCNetworkProvider,
         text(L"CoCreateInstance(ATSC Network Provider) failed: ") +
             ErrorHandler::errorMessageFromHr(REGDB_E_CLASSNOTREG)},
        {provider, L"fault.join", L"0x80004005", nullptr,
         text(L"IGraphBuilder::AddFilter(Network Provider) failed: ") + ErrorHandler::errorMessageFromHr(E_FAIL)},
        {provider, L"fault.ITuner", L"yes", nullptr,
         text(L"QueryInterface(ITuner) failed: ") + ErrorHandler::errorMessageFromHr(E_NOINTERFACE)},
        {tuner, L"fault.bind", L"0x80070005", nullptr, text(L"Failed to load the BDA network tuner filter")},
        {tuner, L"fault.join", L"0x80004005", nullptr, text(L"Failed to load the BDA network tuner filter")},
        {tuner, L"fault.connect", L"yes", nullptr, text(L"IGraphBuilder::Connect failed: ")},
    };
    const CComPtr<IMoniker> moniker = FaultyMoniker::systemMoniker(KSCATEGORY_BDA_NETWORK_TUNER, tuner);
    ASSERT_TRUE(moniker);
    for (const auto &c : cases) {
        SCOPED_TRACE(kel::String(c.fault).toUtf8());
        log().clear();
        std::unique_ptr<lab::DeviceOverride> refuse;
        if (c.device)
            refuse.reset(new lab::DeviceOverride(c.device, c.fault, c.value));
        std::unique_ptr<RefusedClass> unregistered;
        if (c.refused)
            unregistered.reset(new RefusedClass(*c.refused, REGDB_E_CLASSNOTREG));
        DSMoniker record;
        record.create(moniker, CaptureStreamType::DIGITAL(), 1);
        EXPECT_EQ(record.capabilities().size(), 0);
        EXPECT_TRUE(log().contains(c.logged)) << c.logged.toUtf8();
        EXPECT_FALSE(log().contains(text(L" append capability ")));
    }
}

} // namespace
