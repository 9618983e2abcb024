// How the library finds the RealSense runtime through the SDK's dispatch keys: each route on
// its own, a route that leads nowhere passed over, the relative fallback, a file without the
// factory, and no keys at all. These tests rewrite the keys of the shared prefix (restored
// afterwards), so ctest runs them alone.
#include "DepthProbe.h"
#include "FrameworkTest.h"
#include "HostProgram.h"
#include "ProgramCopies.h"
#include "SavedRegistryValue.h"
#include "StandInRuntime.h"

#include <RealSenseEnumeration.h>

#include <string>
#include <vector>

namespace {

using sorvane::test::binFolder;
using sorvane::test::contains;
using sorvane::test::DepthProbe;
using sorvane::test::narrow;
using sorvane::test::SavedRegistryValue;
using sorvane::test::StandInRuntime;

const wchar_t kDispatch[] = L"Software\\Intel\\RSSDK\\Dispatch";
const wchar_t kWow64Dispatch[] = L"Software\\Wow6432Node\\Intel\\RSSDK\\Dispatch";
const wchar_t kCoreDispatch[] = L"Software\\Intel\\RSSDK\\v4\\Dispatch";

const char kOneCamera[] = "[realsense-capture]\nname = Capture\n[realsense-camera]\nname = Depth Cam\n";

std::string lower(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    return text;
}

// A folder tree under the temporary folder, removed with everything in it.
class ScratchTree {
public:
    explicit ScratchTree(const std::wstring &name)
    {
        wchar_t temp[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temp);
        m_root = std::wstring(temp) + name + L"-" + std::to_wstring(GetCurrentProcessId());
        removeTree(m_root);
        CreateDirectoryW(m_root.c_str(), nullptr);
    }
    ~ScratchTree() { removeTree(m_root); }

    // Creates the folder `relative` (with its parents) and returns its full path.
    std::wstring folder(const std::wstring &relative) const
    {
        std::wstring path = m_root;
        size_t start = 0;
        while (start <= relative.size()) {
            const size_t end = relative.find(L'\\', start);
            path += L"\\" + relative.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start);
            CreateDirectoryW(path.c_str(), nullptr);
            if (end == std::wstring::npos)
                break;
            start = end + 1;
        }
        return path;
    }

private:
    static void removeTree(const std::wstring &path)
    {
        WIN32_FIND_DATAW found;
        HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &found);
        if (search != INVALID_HANDLE_VALUE) {
            do {
                const std::wstring name = found.cFileName;
                if (name == L"." || name == L"..")
                    continue;
                if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                    removeTree(path + L"\\" + name);
                else
                    DeleteFileW((path + L"\\" + name).c_str());
            } while (FindNextFileW(search, &found));
            FindClose(search);
        }
        RemoveDirectoryW(path.c_str());
    }

    std::wstring m_root;
};

class RealSenseDispatchTest : public sorvane::test::FrameworkTest {
protected:
    RealSenseDispatchTest()
        : m_dispatch(kDispatch, L"LocalRuntime"), m_wow64(kWow64Dispatch, L"LocalRuntime"),
          m_core(kCoreDispatch, L"Core")
    {
        m_runtime.describe(kOneCamera);
    }

    // Lists the cameras; returns the module and arguments of the factory call that answered,
    // e.g. "4 0 0 0 1 0 z:\...\libpxcsession.dll", empty when none was called.
    std::string listedBy(unsigned expectedCount)
    {
        m_runtime.clearJournal();
        kel::Array<PXCCapture::DeviceInfo> devices;
        EXPECT_EQ(expectedCount, sorvane::enumIntelRealSenseDevice(devices));
        const std::vector<std::string> journal = m_runtime.journal();
        std::string call;
        for (const std::string &entry : journal) {
            if (entry.compare(0, 21, "PXCSession_CreateExt ") == 0)
                call = lower(entry.substr(21));
        }
        return call;
    }

    static std::string inBin(const char *relative) { return lower(narrow(binFolder()) + relative); }

    SavedRegistryValue m_dispatch;
    SavedRegistryValue m_wow64;
    SavedRegistryValue m_core;
    StandInRuntime m_runtime;
};

} // namespace

TEST_F(RealSenseDispatchTest, EachDispatchKeyLeadsToTheRuntime)
{
    EXPECT_EQ("4 0 0 0 1 0 " + inBin("libpxcsession.dll"), listedBy(1));

    // A folder in "LocalRuntime" is an SDK folder: its bin\x64 holds the runtime.
    m_dispatch.set(binFolder() + L"realsense\\sdk");
    EXPECT_EQ("4 0 0 0 1 0 " + inBin("realsense\\sdk\\bin\\x64\\libpxcsession.dll"), listedBy(1));

    m_dispatch.remove();
    m_wow64.set(binFolder() + L"realsense\\sdk");
    EXPECT_EQ("4 0 0 0 1 0 " + inBin("realsense\\sdk\\bin\\x64\\libpxcsession.dll"), listedBy(1));

    // "Core" is the runtime file itself, and asks for no local runtime.
    m_wow64.remove();
    EXPECT_EQ("4 0 0 0 0 0 " + inBin("realsense\\core\\libpxcsession.dll"), listedBy(1));
    EXPECT_EQ(0u, log().find(kel::String("No sessions instantiable.")).size());
}

TEST_F(RealSenseDispatchTest, RoutesThatLeadNowhereArePassedOver)
{
    m_dispatch.set(L"C:\\no such folder");
    m_wow64.set(L"");
    m_core.set(binFolder() + L"realsense\\noexport\\libpxcsession.dll");
    EXPECT_EQ("", listedBy(0));
    EXPECT_EQ(1u, log().find(kel::String("39 No sessions instantiable.")).size());

    m_core.set(binFolder() + L"realsense\\core\\libpxcsession.dll");
    EXPECT_EQ("4 0 0 0 0 0 " + inBin("realsense\\core\\libpxcsession.dll"), listedBy(1));
}

TEST_F(RealSenseDispatchTest, WithNoKeysAndNoCoreNothingIsListed)
{
    m_dispatch.remove();
    m_wow64.remove();
    m_core.remove();
    kel::Array<PXCCapture::DeviceInfo> devices;
    EXPECT_EQ(0u, sorvane::enumIntelRealSenseDevice(devices));
    EXPECT_EQ(0, devices.size());
    const std::vector<sorvane::test::LogCapture::Line> lines = log().find(kel::String("No sessions instantiable."));
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ(kel::String("libSorvane"), lines[0].category);
    EXPECT_EQ(kel::String("39 No sessions instantiable."), lines[0].message);
    EXPECT_TRUE(m_runtime.journal().empty());

    m_core.set(L"");
    EXPECT_EQ(0u, sorvane::enumIntelRealSenseDevice(devices));
    EXPECT_TRUE(m_runtime.journal().empty());
}

// When the named local runtime gives no session, the SDK's relative path is tried: two folders
// up from the current directory, then bin\x64.
TEST_F(RealSenseDispatchTest, ALocalRouteFallsBackToTheSdkFolderAboveTheWorkingFolder)
{
    ScratchTree tree(L"sorvane-realsense-sdk");
    const std::wstring runtimeFolder = tree.folder(L"sdk\\bin\\x64");
    ASSERT_TRUE(CopyFileW((binFolder() + L"libpxcsession.dll").c_str(),
                          (runtimeFolder + L"\\libpxcsession.dll").c_str(), FALSE));
    m_dispatch.set(tree.folder(L"empty"));
    m_wow64.remove();
    m_core.remove();

    const DepthProbe::Outcome outcome = DepthProbe::run(binFolder() + L"depthprobe.exe", tree.folder(L"sdk\\work"));
    ASSERT_TRUE(outcome.finished);
    EXPECT_TRUE(contains(outcome.output, "count 1\ncamera Depth Cam\n")) << outcome.output;
    const std::vector<std::string> journal = m_runtime.journal();
    ASSERT_FALSE(journal.empty());
    EXPECT_EQ("pxcsession_createext 4 0 0 0 1 0 " + lower(narrow(runtimeFolder)) + "\\libpxcsession.dll",
              lower(journal[0]));
}
