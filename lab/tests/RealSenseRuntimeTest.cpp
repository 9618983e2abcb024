// The stand-in RealSense runtime on its own, called through the lab's declaration of the
// published interface (realsense/SdkInterface.h), table slot by table slot: the factory export,
// implementation queries with their templates, creation by interface id, the camera records
// with every field, the slots no caller may reach, and the lab description as the default
// source of its cameras.
#include <gtest/gtest.h>

#include "realsense/SdkInterface.h"

#include <windows.h>

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace sdk = lab::realsense::sdk;

namespace {

typedef sdk::Object<sdk::SessionTable> Session;
typedef sdk::Object<sdk::CaptureTable> Capture;

std::wstring binFolder()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.find_last_of(L"\\/") + 1);
}

sdk::SessionFactory factoryOf(HMODULE runtime)
{
    return reinterpret_cast<sdk::SessionFactory>(
        reinterpret_cast<void (*)()>(GetProcAddress(runtime, "PXCSession_CreateExt")));
}

sdk::ImplementationDescription videoCaptureTemplate()
{
    sdk::ImplementationDescription templat = {};
    templat.group = sdk::kSensorGroup;
    templat.subgroup = sdk::kVideoCaptureSubgroup;
    return templat;
}

// Loads the runtime beside the tests for the life of a test, with a description and a journal
// of the test's own.
class RealSenseRuntimeTest : public testing::Test {
protected:
    void SetUp() override
    {
        wchar_t temp[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temp);
        const std::wstring stem = std::wstring(temp) + L"lab-realsense-" + std::to_wstring(GetCurrentProcessId());
        m_configPath = stem + L".conf";
        m_journalPath = stem + L".journal";
        DeleteFileW(m_journalPath.c_str());
        SetEnvironmentVariableW(L"SORVANE_LAB_REALSENSE_JOURNAL", m_journalPath.c_str());
        m_runtime = LoadLibraryW((binFolder() + L"libpxcsession.dll").c_str());
        ASSERT_NE(nullptr, m_runtime);
        ASSERT_NE(nullptr, factoryOf(m_runtime));
    }
    void TearDown() override
    {
        SetEnvironmentVariableW(L"SORVANE_LAB_REALSENSE_CONFIG", nullptr);
        SetEnvironmentVariableW(L"SORVANE_LAB_REALSENSE_JOURNAL", nullptr);
        DeleteFileW(m_configPath.c_str());
        DeleteFileW(m_journalPath.c_str());
        if (m_runtime)
            FreeLibrary(m_runtime);
    }

    void describe(const std::string &text)
    {
        std::ofstream(m_configPath.c_str(), std::ios::binary) << text;
        SetEnvironmentVariableW(L"SORVANE_LAB_REALSENSE_CONFIG", m_configPath.c_str());
    }

    std::vector<std::string> journal() const
    {
        std::ifstream file(m_journalPath.c_str(), std::ios::binary);
        std::vector<std::string> entries;
        for (std::string line; std::getline(file, line);)
            entries.push_back(line);
        return entries;
    }

    Session *createSession()
    {
        void *session = nullptr;
        EXPECT_EQ(sdk::kNoError, factoryOf(m_runtime)(4, 0, 0, 0, 1, 0, &session));
        return static_cast<Session *>(session);
    }

    static std::wstring implementationName(Session *session, sdk::ImplementationDescription templat, int32_t index)
    {
        sdk::ImplementationDescription description = {};
        if (session->table->queryImpl(session, &templat, index, &description) < sdk::kNoError)
            return L"(none)";
        return description.friendlyName;
    }

    // Implementation `index` of `session`, created as its capture interface; null when it fails.
    static Capture *createCapture(Session *session, int32_t index)
    {
        sdk::ImplementationDescription description = {};
        if (session->table->queryImpl(session, nullptr, index, &description) < sdk::kNoError)
            return nullptr;
        void *instance = nullptr;
        session->table->createImpl(session, &description, 0, sdk::kCaptureInterface, &instance);
        return static_cast<Capture *>(instance);
    }

    HMODULE m_runtime = nullptr;
    std::wstring m_configPath;
    std::wstring m_journalPath;
};

const char kOneCamera[] = "[realsense-capture]\nname = One\n"
                          "[realsense-camera]\nname = Cam\nserial = S1\ndid = \\\\?\\usb#vid_8086&pid_0aa5#1\n"
                          "firmware = 1.2.3.4\nlocation = 12.5, -3\nmodel = SR300\norientation = user-facing\n"
                          "streams = depth, ir, aux-color\nrotation = 180\nconnection = integrated\n"
                          "[realsense-camera]\nname = Second\nmodel = 0x00300001\nconnection = peripheral\n"
                          "[realsense-capture]\nname = Two\n[realsense-camera]\nname = Third\n";

} // namespace

TEST_F(RealSenseRuntimeTest, OffersItsVideoCaptureImplementationsByTemplate)
{
    describe(kOneCamera);
    Session *session = createSession();
    ASSERT_NE(nullptr, session);
    EXPECT_EQ(session, session->table->base.queryInstance(session, sdk::kSessionInterface));
    EXPECT_EQ(session, session->table->base.queryInstance(session, sdk::kBaseInterface));
    EXPECT_EQ(nullptr, session->table->base.queryInstance(session, sdk::kCaptureInterface));
    sdk::Version version = {};
    EXPECT_EQ(&version, session->table->queryVersion(session, &version));
    EXPECT_EQ(11, version.major);

    sdk::ImplementationDescription audio = videoCaptureTemplate();
    audio.subgroup = sdk::kAudioCaptureSubgroup;
    EXPECT_EQ(L"One", implementationName(session, videoCaptureTemplate(), 0));
    EXPECT_EQ(L"Two", implementationName(session, sdk::ImplementationDescription(), 1));
    EXPECT_EQ(L"(none)", implementationName(session, videoCaptureTemplate(), 2));
    EXPECT_EQ(L"(none)", implementationName(session, audio, 0));

    sdk::ImplementationDescription first = {};
    ASSERT_EQ(sdk::kNoError, session->table->queryImpl(session, nullptr, 0, &first));
    EXPECT_EQ(sdk::kSensorGroup, first.group);
    EXPECT_EQ(sdk::kVideoCaptureSubgroup, first.subgroup);
    EXPECT_EQ(sdk::kCaptureInterface, first.cuids[0]);
    session->table->base.release(session);

    const std::vector<std::string> entries = journal();
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ((std::vector<std::string>{"Session created", "QueryImpl 0 group 4 subgroup 2: One",
                                        "QueryImpl 1 group 0 subgroup 0: Two", "QueryImpl 2 group 4 subgroup 2: none",
                                        "QueryImpl 0 group 4 subgroup 1: none", "QueryImpl 0 without template: One",
                                        "Release session"}),
              std::vector<std::string>(entries.begin() + 1, entries.end()));
}

TEST_F(RealSenseRuntimeTest, CreatesItsCapturesAsTheCaptureInterfaceOnly)
{
    describe(kOneCamera);
    Session *session = createSession();
    ASSERT_NE(nullptr, session);
    sdk::ImplementationDescription first = {};
    ASSERT_EQ(sdk::kNoError, session->table->queryImpl(session, nullptr, 0, &first));

    void *instance = nullptr;
    EXPECT_EQ(sdk::kItemUnavailable, session->table->createImpl(session, &first, 0, sdk::kSessionInterface, &instance));
    EXPECT_EQ(nullptr, instance);
    // Without a description the implementation id chooses.
    ASSERT_EQ(sdk::kNoError,
              session->table->createImpl(session, nullptr, first.iuid, sdk::kCaptureInterface, &instance));
    Capture *byId = static_cast<Capture *>(instance);
    ASSERT_NE(nullptr, byId);
    byId->table->base.release(byId);
    ASSERT_EQ(sdk::kNoError, session->table->createImpl(session, &first, 0, sdk::kCaptureInterface, &instance));
    Capture *capture = static_cast<Capture *>(instance);
    ASSERT_NE(nullptr, capture);
    EXPECT_EQ(capture, capture->table->base.queryInstance(capture, sdk::kCaptureInterface));
    EXPECT_EQ(nullptr, capture->table->base.queryInstance(capture, sdk::kSessionInterface));
    capture->table->base.release(capture);
    session->table->base.release(session);

    const std::vector<std::string> entries = journal();
    ASSERT_LE(3u, entries.size());
    const std::string iuid = std::to_string(first.iuid);
    EXPECT_EQ(
        (std::vector<std::string>{"CreateImpl One iuid 0 cuid 0x20534553 failed -3",
                                  "CreateImpl One iuid " + iuid + " cuid 0x83F72A50", "Release capture One",
                                  "CreateImpl One iuid 0 cuid 0x83F72A50", "Release capture One", "Release session"}),
        std::vector<std::string>(entries.begin() + 3, entries.end()));
}

TEST_F(RealSenseRuntimeTest, ReportsEveryFieldOfItsCameraRecords)
{
    describe(kOneCamera);
    Session *session = createSession();
    ASSERT_NE(nullptr, session);
    Capture *capture = createCapture(session, 0);
    ASSERT_NE(nullptr, capture);
    EXPECT_EQ(2, capture->table->queryDeviceNum(capture));

    sdk::CameraRecord record;
    std::memset(&record, 0xCD, sizeof record);
    ASSERT_EQ(sdk::kNoError, capture->table->queryDeviceInfo(capture, 0, &record));
    EXPECT_EQ(L"Cam", std::wstring(record.name));
    EXPECT_EQ(L"S1", std::wstring(record.serial));
    EXPECT_EQ(L"\\\\?\\usb#vid_8086&pid_0aa5#1", std::wstring(record.did));
    EXPECT_EQ((std::vector<int32_t>{1, 2, 3, 4}), std::vector<int32_t>(record.firmware, record.firmware + 4));
    EXPECT_FLOAT_EQ(12.5f, record.location[0]);
    EXPECT_FLOAT_EQ(-3.0f, record.location[1]);
    EXPECT_EQ(sdk::kModelSR300, record.model);
    EXPECT_EQ(sdk::kOrientationUserFacing, record.orientation);
    EXPECT_EQ(sdk::kStreamDepth | sdk::kStreamIr | sdk::kStreamAuxColor, record.streams);
    EXPECT_EQ(0, record.didx);
    EXPECT_EQ(0, record.duid);
    EXPECT_EQ(180, record.rotation);
    EXPECT_EQ(sdk::kConnectionUsbIntegrated, record.connectionType);
    EXPECT_EQ(std::vector<int32_t>(11, 0), std::vector<int32_t>(record.reserved, record.reserved + 11));

    ASSERT_EQ(sdk::kNoError, capture->table->queryDeviceInfo(capture, 1, &record));
    EXPECT_EQ(L"Second", std::wstring(record.name));
    EXPECT_EQ(0x00300001, record.model);
    EXPECT_EQ(1, record.didx);
    EXPECT_EQ(1, record.duid);
    EXPECT_EQ(0, record.rotation);
    EXPECT_EQ(sdk::kConnectionUsbPeripheral, record.connectionType);
    EXPECT_EQ(sdk::kItemUnavailable, capture->table->queryDeviceInfo(capture, 2, &record));
    capture->table->base.release(capture);

    // The other implementation's first camera: index 0 there, but the session's third camera.
    capture = createCapture(session, 1);
    ASSERT_NE(nullptr, capture);
    ASSERT_EQ(sdk::kNoError, capture->table->queryDeviceInfo(capture, 0, &record));
    EXPECT_EQ(L"Third", std::wstring(record.name));
    EXPECT_EQ(0, record.didx);
    EXPECT_EQ(2, record.duid);
    capture->table->base.release(capture);
    session->table->base.release(session);
}

// A caller whose table is out of step reaches a slot it has no business in: the journal says so.
TEST_F(RealSenseRuntimeTest, SlotsNoCallerMayReachAreRecordedAndFail)
{
    describe(kOneCamera);
    Session *session = createSession();
    ASSERT_NE(nullptr, session);
    EXPECT_EQ(sdk::kFeatureUnsupported, session->table->queryModuleDesc(session));
    EXPECT_EQ(nullptr, session->table->createImage(session));
    EXPECT_EQ(sdk::kFeatureUnsupported, session->table->unloadImplFromFile(session));
    Capture *capture = createCapture(session, 0);
    ASSERT_NE(nullptr, capture);
    EXPECT_EQ(nullptr, capture->table->createDevice(capture));
    EXPECT_EQ(sdk::kFeatureUnsupported, capture->table->unsubscribeToCaptureCallbacks(capture));
    capture->table->base.release(capture);
    session->table->base.release(session);

    std::vector<std::string> unexpected;
    for (const std::string &entry : journal()) {
        if (entry.compare(0, 15, "Unexpected call") == 0)
            unexpected.push_back(entry);
    }
    EXPECT_EQ((std::vector<std::string>{"Unexpected call PXCSession slot 5", "Unexpected call PXCSession slot 6",
                                        "Unexpected call PXCSession slot 9", "Unexpected call PXCCapture slot 4",
                                        "Unexpected call PXCCapture slot 6"}),
              unexpected);
}

TEST_F(RealSenseRuntimeTest, DescribesTheLabsCamerasByDefaultAndRefusesSessionsWhenTold)
{
    Session *session = createSession();
    ASSERT_NE(nullptr, session);
    EXPECT_EQ(L"Lab RealSense Front Capture", implementationName(session, sdk::ImplementationDescription(), 0));
    EXPECT_EQ(L"Lab RealSense World Capture", implementationName(session, sdk::ImplementationDescription(), 1));
    session->table->base.release(session);

    describe("[realsense-runtime]\nfault.session = -503\n");
    void *refused = nullptr;
    EXPECT_EQ(sdk::kInitFailed, factoryOf(m_runtime)(4, 0, 0, 0, 1, 0, &refused));
    EXPECT_EQ(nullptr, refused);
}

TEST(RealSenseRuntimeWithoutFactory, HasNoFactoryExport)
{
    HMODULE runtime = LoadLibraryW((binFolder() + L"realsense\\noexport\\libpxcsession.dll").c_str());
    ASSERT_NE(nullptr, runtime);
    EXPECT_EQ(nullptr, factoryOf(runtime));
    FreeLibrary(runtime);
}
