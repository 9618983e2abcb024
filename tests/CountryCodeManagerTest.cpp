// The country table: order, keys, quirks kept on purpose, and the bounds of index access.
#include "AssertionCatcher.h"
#include "FrameworkTest.h"

#include <CountryCodeManager.h>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>

namespace {

using sorvane::CountryCode;
using sorvane::CountryCodeManager;

class CountryCodeManagerTest : public sorvane::test::FrameworkTest {
protected:
    CountryCodeManager manager;
};

TEST_F(CountryCodeManagerTest, HoldsEveryRowButTheSecondAn)
{
    ASSERT_EQ(manager.countryCodeCount(), 238);
    const CountryCode *antilles = manager.countryCodeByString(kel::String(L"an"));
    ASSERT_NE(antilles, nullptr);
    EXPECT_EQ(antilles->name(), kel::String(L"French Antilles"));
    EXPECT_EQ(antilles->countryCode(), 590);
    for (int i = 0; i < manager.countryCodeCount(); ++i) {
        EXPECT_NE(manager.countryCodeAtIndex(i)->name(), kel::String(L"Netherlands Antilles"));
    }
}

TEST_F(CountryCodeManagerTest, KeepsInsertionOrderWithTheUsaFirst)
{
    const CountryCode *usa = manager.countryCodeAtIndex(0);
    EXPECT_EQ(usa->name(), kel::String(L"USA"));
    EXPECT_EQ(usa->language(), 1033);
    EXPECT_EQ(manager.countryCodeAtIndex(1)->name(), kel::String::fromUtf8("Afghanistan افغانستان"));
    EXPECT_EQ(manager.countryCodeAtIndex(1)->language(), 0);
    // After the dropped "an" row every later record moves up by one.
    EXPECT_EQ(manager.countryCodeAtIndex(153)->name(), kel::String(L"Netherlands (Nederland)"));
    EXPECT_EQ(manager.countryCodeAtIndex(154)->name(), kel::String(L"Nevis"));
    EXPECT_EQ(manager.countryCodeAtIndex(237)->name(), kel::String(L"Zimbabwe"));
    EXPECT_EQ(manager.countryCodeAtIndex(237)->countryCode(), 263);
}

TEST_F(CountryCodeManagerTest, KeysAreExactAndCaseSensitive)
{
    const CountryCode *usa = manager.countryCodeByString(kel::String(L"us"));
    ASSERT_NE(usa, nullptr);
    EXPECT_EQ(usa->name(), kel::String(L"USA"));
    EXPECT_EQ(usa->countryCode(), 1);
    EXPECT_EQ(usa->standard().description(), kel::String(L"NTSC (M) 7.5 IRE black"));
    EXPECT_EQ(usa->standard().shortName(), kel::String(L"NTSC"));
    EXPECT_EQ(usa->language(), 1033);
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"US")), nullptr);
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"u")), nullptr);
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"usa")), nullptr);
    EXPECT_EQ(manager.countryCodeByString(kel::String()), nullptr);
}

TEST_F(CountryCodeManagerTest, KoreanKeysStayReversed)
{
    const CountryCode *kr = manager.countryCodeByString(kel::String(L"kr"));
    const CountryCode *kp = manager.countryCodeByString(kel::String(L"kp"));
    ASSERT_NE(kr, nullptr);
    ASSERT_NE(kp, nullptr);
    EXPECT_EQ(kr->name(), kel::String::fromUtf8("Korea (North) (대한민국)"));
    EXPECT_EQ(kr->countryCode(), 850);
    EXPECT_EQ(kr->standard().description(), kel::String(L"SECAM (D)"));
    EXPECT_EQ(kp->name(), kel::String::fromUtf8("Korea (South) (대한민국)"));
    EXPECT_EQ(kp->countryCode(), 82);
    EXPECT_EQ(kp->standard().description(), kel::String(L"NTSC (M) 7.5 IRE black"));
}

TEST_F(CountryCodeManagerTest, NonLatinNamesAndStandardsSurviveIntact)
{
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"jp"))->name(), kel::String::fromUtf8("Japan (日本)"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"jp"))->standard().shortName(), kel::String(L"NTSC Japan"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"mv"))->name(), kel::String::fromUtf8("Maldives (ދިވެހި ރާއްޖެ)"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"ge"))->name(), kel::String::fromUtf8("Georgia (საქართველო)"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"cd"))->name(), kel::String(L"Congo(DRC)"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"se"))->name(), kel::String(L"Sweden (Lule)"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"fr"))->standard().shortName(), kel::String(L"SECAM L"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"br"))->standard().shortName(), kel::String(L"PAL M"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"mc"))->standard().shortName(), kel::String(L"SECAM G"));
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"ca"))->countryCode(), 2);
    EXPECT_EQ(manager.countryCodeByString(kel::String(L"hk"))->countryCode(), 852);
}

TEST_F(CountryCodeManagerTest, EveryRecordIsReachableByItsKeyWithOneNameForBothAccessors)
{
    std::set<std::wstring> keys;
    for (int i = 0; i < manager.countryCodeCount(); ++i) {
        const CountryCode *record = manager.countryCodeAtIndex(i);
        EXPECT_EQ(record->name(), record->localizedName());
        EXPECT_EQ(record->key().length(), 2);
        EXPECT_EQ(manager.countryCodeByString(record->key()), record);
        EXPECT_GT(record->countryCode(), 0);
        EXPECT_FALSE(record->standard().description().isEmpty());
        keys.insert(record->key().wstr());
    }
    EXPECT_EQ(keys.size(), 238u);
}

TEST_F(CountryCodeManagerTest, IndexOutOfRangeIsAnObservableAssertion)
{
    sorvane::test::AssertionCatcher catcher;
    EXPECT_THROW(manager.countryCodeAtIndex(238), std::out_of_range);
    EXPECT_THROW(manager.countryCodeAtIndex(-1), std::out_of_range);
    EXPECT_EQ(catcher.assertions().size(), 2u);
    EXPECT_EQ(catcher.raisedCount(), 2);
}

TEST_F(CountryCodeManagerTest, DefaultRecordIsEmpty)
{
    const CountryCode empty;
    EXPECT_TRUE(empty.name().isEmpty());
    EXPECT_TRUE(empty.key().isEmpty());
    EXPECT_EQ(empty.countryCode(), 0);
    EXPECT_EQ(empty.language(), 0);
    const CountryCode copy = *manager.countryCodeAtIndex(81);
    EXPECT_EQ(copy.name(), kel::String(L"Germany (Deutschland)"));
    EXPECT_EQ(copy.countryCode(), 49);
}

} // namespace
