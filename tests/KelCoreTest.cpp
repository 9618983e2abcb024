// The reference framework's common library: the behaviours the library leans on.
#include "AssertionCatcher.h"
#include "FrameworkTest.h"
#include "ManualClock.h"
#include "ScratchFolder.h"

#include <kel/OrderedHashTable.h>
#include <kel/Stopwatch.h>
#include <kel/System.h>
#include <kel/KELLocale.h>

namespace {

using kel::String;
using sorvane::test::narrow;

TEST(KelStringTest, TextOperationsWorkOnUtf16)
{
    const String path(L"\\\\?\\usb#vid_046d&pid_0825#7&1a2b#{65e8}\\global");
    EXPECT_EQ(path.find(String(L"?\\")), 2);
    EXPECT_EQ(path.find(String(L"nothing")), String::npos);
    EXPECT_EQ(narrow(path.substring(4).toUpper().replace(String(L"#"), String(L"\\"))),
              "USB\\VID_046D&PID_0825\\7&1A2B\\{65E8}\\GLOBAL");
    EXPECT_EQ(narrow(String(L" \t text \r\n").trim()), "text");

    const kel::Array<String> parts = String(L"a,,b").split(L',');
    ASSERT_EQ(parts.size(), 3);
    EXPECT_TRUE(parts[1].isEmpty());

    const String native = String::fromUtf8("Afghanistan افغانستان");
    EXPECT_EQ(native.length(), 21);
    EXPECT_EQ(native.toUtf8(), "Afghanistan افغانستان");
}

TEST(KelStringTest, NumbersAndHexadecimal)
{
    EXPECT_EQ(narrow(String::hex(static_cast<uint32_t>(0x8007000E), true)), "8007000E");
    EXPECT_EQ(narrow(String::hex(static_cast<uint32_t>(0x1F), true)), "0000001F");
    EXPECT_EQ(narrow(String::hex(static_cast<uint32_t>(0x1F), false)), "1F");
    EXPECT_EQ(narrow(String::hex(static_cast<uint8_t>(7), true)), "07");
    EXPECT_EQ(narrow(String::fromInt(-42)), "-42");

    uint64_t parsed = 0;
    EXPECT_TRUE(String(L" 69 ").toUInt(parsed));
    EXPECT_EQ(parsed, 69u);
    EXPECT_FALSE(String(L"-1").toUInt(parsed));
    EXPECT_FALSE(String(L"12abc").toUInt(parsed));
    double value = 0;
    EXPECT_TRUE(String(L"88.1").toDouble(value));
    EXPECT_DOUBLE_EQ(value, 88.1);
}

TEST(KelOrderedHashTableTest, KeepsInsertionOrderFirstInsertionWinsAndChecksIndexes)
{
    kel::OrderedHashTable<String, int> table(32);
    EXPECT_TRUE(table.insert(String(L"us"), 1));
    EXPECT_TRUE(table.insert(String(L"af"), 93));
    EXPECT_FALSE(table.insert(String(L"us"), 2));
    EXPECT_EQ(table.size(), 2);
    EXPECT_EQ(*table.lookup(String(L"us")), 1);
    EXPECT_EQ(table.lookup(String(L"US")), nullptr);
    EXPECT_EQ(narrow(table.keyAt(1)), "af");

    table.put(String(L"us"), 3);
    EXPECT_EQ(table.valueAt(0), 3);
    EXPECT_TRUE(table.remove(String(L"us")));
    EXPECT_EQ(table.indexOf(String(L"af")), 0);

    sorvane::test::AssertionCatcher catcher;
    EXPECT_THROW(table.valueAt(5), std::out_of_range);
    ASSERT_EQ(catcher.assertions().size(), 1u);
    EXPECT_EQ(catcher.raisedCount(), 1);
}

TEST(KelClockTest, ManualClockRecordsSleepsAndDrivesStopwatches)
{
    sorvane::test::ManualClock clock;
    kel::Stopwatch watch;
    kel::System::mssleep(1000);
    kel::System::mssleep(5000);
    EXPECT_EQ(clock.sleeps(), (std::vector<uint32_t>{1000, 5000}));
    EXPECT_DOUBLE_EQ(watch.elapsedSeconds(), 6.0);
    clock.advance(65000);
    EXPECT_EQ(watch.elapsedMilliseconds(), 71000u);
    watch.reset();
    EXPECT_EQ(watch.elapsedMilliseconds(), 0u);
}

TEST(KelClockTest, RealClockSleepsForReal)
{
    kel::Stopwatch watch;
    kel::System::mssleep(20);
    EXPECT_GE(watch.elapsedMilliseconds(), 15u);
    EXPECT_TRUE(kel::Clock::recordedSleeps().isEmpty());
}

TEST(KelLocaleTest, GlobalLocaleCanBeSetAndKnowsLanguageValues)
{
    kel::KELLocale::setGlobalLocale(kel::KELLocale(kel::Language(String(L"zh-TW"))));
    EXPECT_EQ(narrow(kel::KELLocale::getGlobalLocale().getLanguage().toString()), "zh-tw");
    EXPECT_EQ(kel::Language(String(L"ar")).value(), 1);
    EXPECT_EQ(kel::Language(String(L"he")).value(), 8);
    EXPECT_EQ(kel::Language(String(L"xx")).value(), -1);
    kel::KELLocale::resetGlobalLocale();
    EXPECT_FALSE(kel::KELLocale::getGlobalLocale().getLanguage().toString().isEmpty());
}

class KelLogTest : public sorvane::test::FrameworkTest {};

TEST_F(KelLogTest, LoggerThresholdsDecideWhatIsWritten)
{
    kel::Logger *logger = nullptr;
    kel::LogFactory::createLogger(String(L"test.Category"), logger);
    kel::Logger *again = nullptr;
    kel::LogFactory::createLogger(String(L"test.Category"), again);
    EXPECT_EQ(logger, again);

    logger->setPriority(kel::LOG_ERROR);
    EXPECT_FALSE(kel::LogFactory::admits(logger, kel::LOG_DETAIL));
    logger->log(kel::LOG_DETAIL, String(L"hidden"));
    logger->log(kel::LOG_ERROR, String(L"shown"));
    logger->setPriority(kel::LOG_DETAIL);
    EXPECT_FALSE(log().contains(String(L"hidden")));
    EXPECT_TRUE(log().contains(String(L"shown")));
}

TEST_F(KelLogTest, TheFileKeepsItsOwnLevelWhileTheObserverSeesEveryAdmittedLine)
{
    sorvane::test::ScratchFolder folder(L"kel-log");
    const std::wstring path = folder.file(L"log.txt");
    kel::Logger *logger = nullptr;
    kel::LogFactory::createLogger(String(L"test.FileLevel"), logger);
    const int before = kel::LogFactory::getPriority();
    kel::LogFactory::setPriority(kel::LOG_DETAIL);
    kel::LogFactory::setLogFile(String(path.c_str()));
    kel::LogFactory::setLogFilePriority(kel::LOG_WARNING);

    logger->log(kel::LOG_DETAIL, String(L"a detail line"));
    logger->log(kel::LOG_ERROR, String(L"an error line"));
    kel::LogFactory::setLogFile(String());
    kel::LogFactory::setLogFilePriority(kel::LOG_DETAIL);
    kel::LogFactory::setPriority(before);

    EXPECT_TRUE(log().contains(String(L"a detail line")));
    const std::string file = sorvane::test::ScratchFolder::read(path);
    EXPECT_EQ(std::string::npos, file.find("a detail line")) << file;
    EXPECT_NE(std::string::npos, file.find("ERROR test.FileLevel: an error line")) << file;
}

} // namespace
