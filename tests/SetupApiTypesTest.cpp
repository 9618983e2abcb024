// SetupAPI class and enumerator types: lookups by name and their printed forms.
#include "FrameworkTest.h"

#include <SetupApiDevType.h>
#include <SetupApiEnumType.h>
#include <devguid.h>
#include <gtest/gtest.h>

namespace {

using sorvane::SetupApiDevType;
using sorvane::SetupApiEnumType;

class SetupApiTypesTest : public sorvane::test::FrameworkTest {};

TEST_F(SetupApiTypesTest, ClassLookupIgnoresCaseAndUsesTheSystemName)
{
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"media")), &SetupApiDevType::MEDIA());
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"MEDIA")), &SetupApiDevType::MEDIA());
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"Medium_Changer")), &SetupApiDevType::MEDIUM_CHANGER());
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"1394")), &SetupApiDevType::IEEE1394());
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"IEEE1394")), &SetupApiDevType::NOTSET());
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"volume")), &SetupApiDevType::VOLUME());
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"")), &SetupApiDevType::NOTSET());
}

TEST_F(SetupApiTypesTest, PlaceholdersAreNotLookedUp)
{
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"ALL")), &SetupApiDevType::NOTSET());
    EXPECT_EQ(&SetupApiDevType::fromString(kel::String(L"notset")), &SetupApiDevType::NOTSET());
    EXPECT_EQ(&SetupApiEnumType::fromString(kel::String(L"all")), &SetupApiEnumType::NOTSET());
    EXPECT_TRUE(SetupApiDevType::ALL().isPlaceHolder());
    EXPECT_EQ(SetupApiDevType::ALL().classGuid(), nullptr);
    EXPECT_FALSE(SetupApiDevType::MEDIA().isPlaceHolder());
    EXPECT_TRUE(SetupApiEnumType::NOTSET().isPlaceHolder());
    EXPECT_FALSE(SetupApiEnumType::V1394().isPlaceHolder());
}

TEST_F(SetupApiTypesTest, ClassesCarryTheSystemClassGuids)
{
    EXPECT_TRUE(IsEqualGUID(*SetupApiDevType::MEDIA().classGuid(), GUID_DEVCLASS_MEDIA));
    EXPECT_TRUE(IsEqualGUID(*SetupApiDevType::IEEE1394().classGuid(), GUID_DEVCLASS_1394));
    const GUID usb = {0x36FC9E60, 0xC465, 0x11CF, {0x80, 0x56, 0x44, 0x45, 0x53, 0x54, 0x00, 0x00}};
    EXPECT_TRUE(IsEqualGUID(*SetupApiDevType::USB().classGuid(), usb));
}

TEST_F(SetupApiTypesTest, EnumeratorNamedV1394IsNotTheSystemText)
{
    EXPECT_EQ(&SetupApiEnumType::fromString(kel::String(L"1394")), &SetupApiEnumType::NOTSET());
    EXPECT_EQ(&SetupApiEnumType::fromString(kel::String(L"v1394")), &SetupApiEnumType::V1394());
    EXPECT_EQ(&SetupApiEnumType::fromString(kel::String(L"pci")), &SetupApiEnumType::PCI());
    EXPECT_EQ(&SetupApiEnumType::fromString(kel::String(L"Acpi_Hal")), &SetupApiEnumType::ACPI_HAL());
}

TEST_F(SetupApiTypesTest, EqualityLooksAtTheNameOnly)
{
    EXPECT_EQ(SetupApiDevType(L"MEDIA", nullptr, true), SetupApiDevType::MEDIA());
    EXPECT_NE(SetupApiDevType::MEDIA(), SetupApiDevType::SOUND());
    EXPECT_EQ(SetupApiEnumType(L"USB", true), SetupApiEnumType::USB());
    EXPECT_NE(SetupApiEnumType(L"usb", false), SetupApiEnumType::USB());
}

TEST_F(SetupApiTypesTest, PrintedFormsDifferByTheBlankAfterTheColon)
{
    const kel::String no = kel::String::fromBool(false);
    const kel::String yes = kel::String::fromBool(true);
    EXPECT_NE(no, yes);
    EXPECT_EQ(SetupApiDevType::MEDIA().toString(), kel::String(L"MEDIA PlaceHolder: ") + no);
    EXPECT_EQ(SetupApiDevType::ALL().toString(), kel::String(L"ALL PlaceHolder: ") + yes);
    EXPECT_EQ(SetupApiEnumType::PCI().toString(), kel::String(L"PCI PlaceHolder:") + no);
    EXPECT_EQ(SetupApiEnumType::NOTSET().toString(), kel::String(L"NOTSET PlaceHolder:") + yes);
}

} // namespace
