// The process checks against real processes: a small program copied under the names of
// Windows Media Center and the FastAccess tray program.
#include "FrameworkTest.h"

#include <CaptureUtil.h>
#include <gtest/gtest.h>
#include <windows.h>
#include <string>
#include <vector>

namespace {

using sorvane::CaptureUtil;

std::wstring binFolder()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.find_last_of(L"\\/") + 1);
}

// A private temp folder holding copies of the waiting program; removed with its copies.
class ProgramCopies {
public:
    ProgramCopies()
    {
        wchar_t temp[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temp);
        m_folder = std::wstring(temp) + L"sorvane-process-check-" + std::to_wstring(GetCurrentProcessId()) + L"\\";
        CreateDirectoryW(m_folder.c_str(), nullptr);
    }
    ~ProgramCopies()
    {
        for (const std::wstring& copy : m_copies) DeleteFileW(copy.c_str());
        RemoveDirectoryW(m_folder.c_str());
    }
    std::wstring copyAs(const wchar_t* name)
    {
        const std::wstring target = m_folder + name;
        if (!CopyFileW((binFolder() + L"waitforend.exe").c_str(), target.c_str(), FALSE)) return std::wstring();
        m_copies.push_back(target);
        return target;
    }

private:
    std::wstring m_folder;
    std::vector<std::wstring> m_copies;
};

// One running copy; ends it and waits for it in the destructor.
class RunningProgram {
public:
    explicit RunningProgram(const std::wstring& path)
        : m_ready(nullptr), m_end(nullptr), m_process()
    {
        const std::wstring ready = eventName(L"ready");
        const std::wstring end = eventName(L"end");
        m_ready = CreateEventW(nullptr, TRUE, FALSE, ready.c_str());
        m_end = CreateEventW(nullptr, TRUE, FALSE, end.c_str());
        std::wstring commandLine = L"\"" + path + L"\" " + ready + L" " + end;
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        if (CreateProcessW(path.c_str(), &commandLine[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                           &m_process)) {
            m_started = WaitForSingleObject(m_ready, 20000) == WAIT_OBJECT_0;
        }
    }
    ~RunningProgram()
    {
        end();
        CloseHandle(m_ready);
        CloseHandle(m_end);
    }

    bool started() const { return m_started; }
    // Tells the program to end and waits until it has.
    bool end()
    {
        if (!m_process.hProcess) return true;
        SetEvent(m_end);
        const bool ended = WaitForSingleObject(m_process.hProcess, 20000) == WAIT_OBJECT_0;
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
        m_process = PROCESS_INFORMATION();
        return ended;
    }

private:
    std::wstring eventName(const wchar_t* role)
    {
        static int counter = 0;
        return L"sorvane-process-check-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
               std::to_wstring(++counter) + L"-" + role;
    }

    HANDLE m_ready;
    HANDLE m_end;
    PROCESS_INFORMATION m_process;
    bool m_started = false;
};

class ProcessCheckTest : public sorvane::test::FrameworkTest {
protected:
    ProgramCopies copies;
};

const long kGeneralFailureHr = HRESULT_FROM_WIN32(ERROR_GEN_FAILURE);

TEST_F(ProcessCheckTest, NothingRunsUnderTheWatchedNames)
{
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"ehshell.exe")));
    EXPECT_FALSE(CaptureUtil::mediaCenterIsRunning());
    EXPECT_FALSE(CaptureUtil::fastAccessCheck(kGeneralFailureHr));
}

TEST_F(ProcessCheckTest, MediaCenterShellIsSeenWhileItRunsAndOnlyInLowerCase)
{
    RunningProgram shell(copies.copyAs(L"ehshell.exe"));
    ASSERT_TRUE(shell.started());
    EXPECT_TRUE(CaptureUtil::processIsRunning(kel::String(L"ehshell.exe")));
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"EHSHELL.EXE")));
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"ehshell")));
    EXPECT_TRUE(CaptureUtil::mediaCenterIsRunning());
    EXPECT_FALSE(CaptureUtil::fastAccessCheck(kGeneralFailureHr));

    ASSERT_TRUE(shell.end());
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"ehshell.exe")));
    EXPECT_FALSE(CaptureUtil::mediaCenterIsRunning());
}

TEST_F(ProcessCheckTest, MediaCenterRecorderAloneCountsAsMediaCenter)
{
    RunningProgram recorder(copies.copyAs(L"ehrec.exe"));
    ASSERT_TRUE(recorder.started());
    EXPECT_FALSE(CaptureUtil::processIsRunning(kel::String(L"ehshell.exe")));
    EXPECT_TRUE(CaptureUtil::mediaCenterIsRunning());

    ASSERT_TRUE(recorder.end());
    EXPECT_FALSE(CaptureUtil::mediaCenterIsRunning());
}

TEST_F(ProcessCheckTest, FastAccessCountsOnlyForCodesEndingInGeneralFailure)
{
    RunningProgram tray(copies.copyAs(L"fatraymon.exe"));
    ASSERT_TRUE(tray.started());
    EXPECT_TRUE(CaptureUtil::fastAccessCheck(kGeneralFailureHr));
    EXPECT_TRUE(CaptureUtil::fastAccessCheck(31));
    EXPECT_TRUE(CaptureUtil::fastAccessCheck(static_cast<long>(0x8004021F)));
    // Low byte 0x20: answered at once, whatever runs.
    EXPECT_FALSE(CaptureUtil::fastAccessCheck(HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION)));
    EXPECT_FALSE(CaptureUtil::mediaCenterIsRunning());

    ASSERT_TRUE(tray.end());
    EXPECT_FALSE(CaptureUtil::fastAccessCheck(kGeneralFailureHr));
}

} // namespace
