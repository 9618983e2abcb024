// The stand-in RealSense runtime on its own, called as the SDK's interface is called: the factory
// export, implementation queries with their templates, creation by interface id, the device
// records, and the lab description as the default source of its cameras.
#include <gtest/gtest.h>

#include "RealSenseSdk.h"

#include <windows.h>

#include <string>

namespace {

std::wstring binFolder()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.find_last_of(L"\\/") + 1);
}

PXCSessionCreateExtFunction factoryOf(HMODULE runtime)
{
    return reinterpret_cast<PXCSessionCreateExtFunction>(
        reinterpret_cast<void (*)()>(GetProcAddress(runtime, "PXCSession_CreateExt")));
}

// Loads the runtime beside the tests for the life of a test.
class RealSenseRuntimeTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_runtime = LoadLibraryW((binFolder() + L"libpxcsession.dll").c_str());
        ASSERT_NE(nullptr, m_runtime);
        ASSERT_NE(nullptr, factoryOf(m_runtime));
    }
    void TearDown() override
    {
        SetEnvironmentVariableW(L"SORVANE_LAB_REALSENSE_CONFIG", nullptr);
        if (!m_configPath.empty())
            DeleteFileW(m_configPath.c_str());
        if (m_runtime)
            FreeLibrary(m_runtime);
    }

    void describe(const std::string &text)
    {
        wchar_t temp[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temp);
        m_configPath = std::wstring(temp) + L"lab-realsense-" + std::to_wstring(GetCurrentProcessId()) + L".conf";
        HANDLE file = CreateFileW(m_configPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        CloseHandle(file);
        SetEnvironmentVariableW(L"SORVANE_LAB_REALSENSE_CONFIG", m_configPath.c_str());
    }

    PXCSession *createSession()
    {
        PXCSession *session = nullptr;
        EXPECT_EQ(PXC_STATUS_NO_ERROR, factoryOf(m_runtime)(4, 0, 0, 0, 1, 0, &session));
        return session;
    }

    static std::wstring implementationName(PXCSession *session, PXCSession::ImplDesc templat, pxcI32 index)
    {
        PXCSession::ImplDesc description = {};
        if (session->QueryImpl(&templat, index, &description) < PXC_STATUS_NO_ERROR)
            return L"(none)";
        return description.friendlyName;
    }

    HMODULE m_runtime = nullptr;
    std::wstring m_configPath;
};

} // namespace

TEST_F(RealSenseRuntimeTest, OffersItsVideoCaptureImplementationsAndTheirCameras)
{
    describe("[realsense-capture]\nname = One\n[realsense-camera]\nname = Cam\nserial = S1\nfirmware = 1.2.3.4\n"
             "model = SR300\norientation = user-facing\nstreams = depth, ir\n"
             "[realsense-capture]\nname = Two\n");
    PXCSession *session = createSession();
    ASSERT_NE(nullptr, session);
    EXPECT_EQ(session, session->QueryInstance(PXCSession::CUID));
    EXPECT_EQ(nullptr, session->QueryInstance(PXCCapture::CUID));

    PXCSession::ImplDesc video = {};
    video.group = PXCSession::IMPL_GROUP_SENSOR;
    video.subgroup = PXCSession::IMPL_SUBGROUP_VIDEO_CAPTURE;
    PXCSession::ImplDesc audio = video;
    audio.subgroup = PXCSession::IMPL_SUBGROUP_AUDIO_CAPTURE;
    EXPECT_EQ(L"One", implementationName(session, video, 0));
    EXPECT_EQ(L"Two", implementationName(session, PXCSession::ImplDesc(), 1));
    EXPECT_EQ(L"(none)", implementationName(session, video, 2));
    EXPECT_EQ(L"(none)", implementationName(session, audio, 0));

    PXCSession::ImplDesc first = {};
    ASSERT_EQ(PXC_STATUS_NO_ERROR, session->QueryImpl(&video, 0, &first));
    void *instance = nullptr;
    EXPECT_GT(PXC_STATUS_NO_ERROR, session->CreateImpl(&first, PXCSession::CUID, &instance));
    EXPECT_EQ(nullptr, instance);
    ASSERT_EQ(PXC_STATUS_NO_ERROR, session->CreateImpl(&first, PXCCapture::CUID, &instance));
    PXCCapture *capture = static_cast<PXCCapture *>(instance);
    ASSERT_NE(nullptr, capture);

    PXCCapture::DeviceInfo info = {};
    ASSERT_EQ(PXC_STATUS_NO_ERROR, capture->QueryDeviceInfo(0, &info));
    EXPECT_EQ(L"Cam", std::wstring(info.name));
    EXPECT_EQ(L"S1", std::wstring(info.serial));
    EXPECT_EQ(4, info.firmware[3]);
    EXPECT_EQ(PXCCapture::DEVICE_MODEL_SR300, info.model);
    EXPECT_EQ(PXCCapture::STREAM_TYPE_DEPTH | PXCCapture::STREAM_TYPE_IR, info.streams);
    EXPECT_EQ(PXC_STATUS_ITEM_UNAVAILABLE, capture->QueryDeviceInfo(1, &info));
    capture->Release();
    session->Release();
}

TEST_F(RealSenseRuntimeTest, DescribesTheLabsCamerasByDefaultAndRefusesSessionsWhenTold)
{
    PXCSession *session = createSession();
    ASSERT_NE(nullptr, session);
    EXPECT_EQ(L"Lab RealSense Front Capture", implementationName(session, PXCSession::ImplDesc(), 0));
    EXPECT_EQ(L"Lab RealSense World Capture", implementationName(session, PXCSession::ImplDesc(), 1));
    session->Release();

    describe("[realsense-runtime]\nfault.session = -503\n");
    PXCSession *refused = nullptr;
    EXPECT_EQ(PXC_STATUS_INIT_FAILED, factoryOf(m_runtime)(4, 0, 0, 0, 1, 0, &refused));
    EXPECT_EQ(nullptr, refused);
}

TEST(RealSenseRuntimeWithoutFactory, HasNoFactoryExport)
{
    HMODULE runtime = LoadLibraryW((binFolder() + L"realsense\\noexport\\libpxcsession.dll").c_str());
    ASSERT_NE(nullptr, runtime);
    EXPECT_EQ(nullptr, factoryOf(runtime));
    FreeLibrary(runtime);
}
