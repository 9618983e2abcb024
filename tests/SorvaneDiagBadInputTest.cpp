// What a new user's bad input does at the host: numbers that are no numbers, whole numbers
// read as decimal, outputs that cannot be written, a tuner named where a camera is meant, a
// question with nobody to see it; each refused before the test, or answered at the terminal.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::ScratchFolder;
using sorvane::test::wide;

namespace {

const DWORD kUsageError = 2;
const DWORD kFail = 10;
const DWORD kNoSignal = 11;
const DWORD kBadParams = 15;
const DWORD kNotSupported = 18;

const wchar_t kTuner[] = L"Lab Analog TV Tuner";
const wchar_t kCamera[] = L"Lab Webcam RGB24";

bool exists(const std::wstring &path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace

TEST(SorvaneDiagBadInputTest, NumbersThatAreNoNumbersAreRefusedBeforeAnyScan)
{
    struct Case {
        const wchar_t *setting;
        const char *said;
    };
    for (const Case &c : {Case{L"FMRadioStartChannel=nan", "FMRadioStartChannel takes DOUBLE"},
                          Case{L"FMRadioEndChannel=inf", "FMRadioEndChannel takes DOUBLE"},
                          Case{L"FMRadioStartChannel=-Infinity", "FMRadioStartChannel takes DOUBLE"},
                          Case{L"FMRadioStartChannel=1e999", "FMRadioStartChannel takes DOUBLE"},
                          Case{L"FMRadioStartChannel=0x58", "FMRadioStartChannel takes DOUBLE"},
                          Case{L"TVStartChannel=0x3", "TVStartChannel takes UINT32"},
                          Case{L"FMRadioStartChannel=1e300", "outside the FM band"}}) {
        SCOPED_TRACE(sorvane::test::narrow(c.setting));
        const HostProgram::Outcome outcome = HostProgram::run({L"fm", L"-d", kTuner, L"--set", c.setting});
        ASSERT_TRUE(outcome.finished);
        EXPECT_EQ(kBadParams, outcome.exitCode) << outcome.out << outcome.err;
        EXPECT_TRUE(contains(outcome.out + outcome.err, c.said)) << outcome.out << outcome.err;
        EXPECT_FALSE(contains(outcome.out, "Testing channel")) << outcome.out;
    }
}

TEST(SorvaneDiagBadInputTest, WholeNumbersAreDecimalAndTheReportNamesSourcesInTheProject)
{
    // Channel 10 has a signal of strength 2 only: no signal, after the scan's second pass.
    ScratchFolder folder(L"sorvane-diag-bad-input");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"tv", L"-d", kTuner, L"--set", L"TVStartChannel=010", L"--set", L"TVEndChannel=010",
                          L"--set", L"CheckTVCable=false", L"--json", folder.file(L"report.json")});
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(kNoSignal, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "Testing channel 10")) << outcome.out;
    EXPECT_FALSE(contains(outcome.out, "Testing channel 8")) << outcome.out;

    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    ASSERT_GT(report["events"].size(), 0u);
    for (size_t i = 0; i < report["events"].size(); ++i) {
        const std::string source = report["events"][i]["source"].text();
        EXPECT_EQ(0u, source.find("modules/src/multi/common/libSorvane/windows/")) << source;
    }
}

TEST(SorvaneDiagBadInputTest, OutputsThatCannotBeWrittenAreRefusedBeforeTheTest)
{
    // A folder that exists but takes no files, whoever runs the test.
    for (const wchar_t *option : {L"--json", L"--log"}) {
        SCOPED_TRACE(sorvane::test::narrow(option));
        const HostProgram::Outcome outcome =
            HostProgram::run({L"webcam", L"-d", kCamera, option, L"Z:\\proc\\sorvane-diag-output"});
        ASSERT_TRUE(outcome.finished);
        EXPECT_EQ(kUsageError, outcome.exitCode) << outcome.out << outcome.err;
        EXPECT_TRUE(contains(outcome.err, std::string("Cannot write the ") + sorvane::test::narrow(option) + " file"))
            << outcome.err;
        EXPECT_FALSE(contains(outcome.out, "Capturing")) << outcome.out;
    }
}

TEST(SorvaneDiagBadInputTest, TheReportReplacesAnEarlierOneWhole)
{
    ScratchFolder folder(L"sorvane-diag-bad-input");
    const std::wstring path = folder.file(L"report.json");
    const std::string earlier(100000, 'x');
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    DWORD written = 0;
    WriteFile(file, earlier.data(), static_cast<DWORD>(earlier.size()), &written, nullptr);
    CloseHandle(file);

    const HostProgram::Outcome outcome = HostProgram::run({L"list", L"--json", path});
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
    const std::string text = ScratchFolder::read(path);
    EXPECT_EQ('{', text.front());
    EXPECT_EQ("list", JsonValue::parse(text)["command"].text());
    // Nothing of the write is left beside it.
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(folder.file(L"*").c_str(), &found);
    ASSERT_NE(INVALID_HANDLE_VALUE, search);
    do {
        if (found.cFileName[0] != L'.')
            names.push_back(found.cFileName);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    EXPECT_EQ(std::vector<std::wstring>{L"report.json"}, names);
}

TEST(SorvaneDiagBadInputTest, ATunerNamedForACameraIsRefusedWithTheCommandsThatFit)
{
    ScratchFolder folder(L"sorvane-diag-bad-input");
    const HostProgram::Outcome outcome =
        HostProgram::run({L"webcam", L"--device", L"Lab ATSC QAM Tuner", L"-o", folder.file(L"frames"), L"--json",
                          folder.file(L"report.json")});
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(kNotSupported, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "Lab ATSC QAM Tuner is a digital TV tuner, not a camera")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "atsc, clearqam, dvbt and ocur")) << outcome.out;
    EXPECT_FALSE(contains(outcome.out, "unplugged")) << outcome.out;
    EXPECT_FALSE(contains(outcome.out, "Capturing")) << outcome.out;
    EXPECT_EQ(0u, JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")))["events"].size());
}

TEST(SorvaneDiagBadInputTest, APassFailQuestionNobodyCanSeeIsAskedAtTheTerminalOrRefused)
{
    // The lab's prefix draws with the null driver: no message box is seen.
    const HostProgram::Outcome refused =
        HostProgram::run({L"preview", L"-d", kCamera, L"--set", L"TestRunTime=1", L"--set", L"Interactive=true"});
    ASSERT_TRUE(refused.finished);
    EXPECT_EQ(kUsageError, refused.exitCode) << refused.out << refused.err;
    EXPECT_TRUE(contains(refused.err, "Add --interactive to answer at the terminal")) << refused.err;
    EXPECT_FALSE(contains(refused.out, "Previewing")) << refused.out;

    struct Case {
        const char *typed;
        DWORD exitCode;
    };
    for (const Case &c : {Case{"maybe\np\n", 0}, Case{"f\n", kFail}}) {
        SCOPED_TRACE(c.typed);
        const HostProgram::Outcome outcome = HostProgram::run(
            {L"preview", L"-d", kCamera, L"--set", L"TestRunTime=1", L"--set", L"Interactive=true", L"--interactive"},
            c.typed);
        ASSERT_TRUE(outcome.finished) << outcome.out;
        EXPECT_EQ(c.exitCode, outcome.exitCode) << outcome.out << outcome.err;
        EXPECT_TRUE(contains(outcome.out, "Question: sorvane-diag: Lab Webcam RGB24")) << outcome.out;
        EXPECT_TRUE(contains(outcome.out, "Type p and Enter if it passed")) << outcome.out;
    }
}

TEST(SorvaneDiagBadInputTest, ARecordingSaysWhereAndHowBig)
{
    const std::wstring name = L"sorvane-diag-size-" + std::to_wstring(GetCurrentProcessId());
    const HostProgram::Outcome outcome = HostProgram::run({L"record", L"-d", L"Lab Webcam YUY2", L"--name", name});
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
    // 640x480 YUY2 at 30 frames a second for three seconds.
    EXPECT_TRUE(contains(outcome.out, "Recording about 3 s into ")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, sorvane::test::narrow(name) + ".avi (640x480 YUY2 at 30 fps: about 55 MB)"))
        << outcome.out;
    const size_t recorded = outcome.out.find("Recorded ");
    ASSERT_NE(std::string::npos, recorded) << outcome.out;
    const std::string line = outcome.out.substr(recorded, outcome.out.find('\n', recorded) - recorded);
    EXPECT_TRUE(contains(line, ".avi (") && contains(line, " MB)")) << line;
    const std::string path = line.substr(9, line.find(".avi") + 4 - 9);
    EXPECT_TRUE(exists(wide(path))) << path;
    DeleteFileW(wide(path).c_str());
}
