// Capture value types: fixed members, equality by name, placeholders, standard sets.
#include "AssertionCatcher.h"
#include "FrameworkTest.h"

#include <CaptureBusType.h>
#include <CaptureCapability.h>
#include <CaptureFeature.h>
#include <CaptureStandard.h>
#include <CaptureStreamType.h>
#include <SdkGuids.h>
#include <gtest/gtest.h>

namespace {

using namespace sorvane;

class CaptureValueTypesTest : public test::FrameworkTest {};

TEST_F(CaptureValueTypesTest, MembersAreSharedInstancesWithTheirNames)
{
    EXPECT_EQ(&CaptureFeature::TVTUNING(), &CaptureFeature::TVTUNING());
    EXPECT_EQ(&CaptureStandard::PAL_B(), &CaptureStandard::PAL_B());
    EXPECT_EQ(CaptureFeature::CAPTURE().toString(), kel::String(L"Capture"));
    EXPECT_EQ(CaptureFeature::WEBCAMCONTROL().toString(), kel::String(L"WebCamControl"));
    EXPECT_EQ(CaptureStreamType::NOTSET().toString(), kel::String(L"NotSet"));
    EXPECT_EQ(CaptureStreamType::CLEARQAM().toString(), kel::String(L"ClearQAM"));
    EXPECT_EQ(CaptureBusType::PCMCIA().toString(), kel::String(L"PCMCIA"));
    EXPECT_EQ(CaptureStandard::COMBO().toString(), kel::String(L"Combonation (N) PAL ARGENTINA"));
    EXPECT_EQ(CaptureStandard::NTSC_J().toString(), kel::String(L"NTSC (M) 0 IRE black (Japan)"));
    EXPECT_EQ(CaptureStandard::DVB_T().toString(), kel::String(L"DVB_T"));
}

TEST_F(CaptureValueTypesTest, EqualityLooksAtTheNameOnly)
{
    EXPECT_EQ(CaptureStreamType::NOTSET(), CaptureStreamType::NOTSET());
    EXPECT_NE(CaptureStreamType::NOTSET(), CaptureStreamType::ALL());
    EXPECT_EQ(CaptureStreamType(L"Analog", nullptr, true), CaptureStreamType::ANALOG());
    EXPECT_EQ(CaptureBusType(L"USB", true), CaptureBusType::USB());
    EXPECT_NE(CaptureBusType(L"usb", false), CaptureBusType::USB());
    EXPECT_EQ(CaptureFeature(L"Capture"), CaptureFeature::CAPTURE());
    EXPECT_EQ(CaptureFeature(), CaptureFeature(L""));
}

TEST_F(CaptureValueTypesTest, OnlyNotSetAndAllArePlaceholders)
{
    EXPECT_TRUE(CaptureStreamType::NOTSET().isPlaceHolder());
    EXPECT_TRUE(CaptureStreamType::ALL().isPlaceHolder());
    EXPECT_FALSE(CaptureStreamType::ANALOG().isPlaceHolder());
    EXPECT_FALSE(CaptureStreamType::DVBT().isPlaceHolder());
    EXPECT_FALSE(CaptureStreamType().isPlaceHolder());
    EXPECT_TRUE(CaptureBusType::NOTSET().isPlaceHolder());
    EXPECT_TRUE(CaptureBusType::ALL().isPlaceHolder());
    EXPECT_FALSE(CaptureBusType::PCI().isPlaceHolder());
    EXPECT_FALSE(CaptureBusType().isPlaceHolder());
}

TEST_F(CaptureValueTypesTest, StreamTypesNameTheirDeviceCategory)
{
    EXPECT_TRUE(IsEqualGUID(CaptureStreamType::ANALOG().classId(), CLSID_VideoInputDeviceCategory));
    const GUID tuners = {0x71985F48, 0x1CA1, 0x11D3, {0x9C, 0xC8, 0x00, 0xC0, 0x4F, 0x79, 0x71, 0xE0}};
    EXPECT_TRUE(IsEqualGUID(CaptureStreamType::DIGITAL().classId(), tuners));
    EXPECT_TRUE(IsEqualGUID(CaptureStreamType::ATSC().classId(), tuners));
    EXPECT_TRUE(IsEqualGUID(CaptureStreamType::CLEARQAM().classId(), tuners));
    EXPECT_TRUE(IsEqualGUID(CaptureStreamType::DVBT().classId(), tuners));
}

TEST_F(CaptureValueTypesTest, AskingAPlaceholderForItsCategoryIsAnAssertion)
{
    test::AssertionCatcher catcher;
    const GUID id = CaptureStreamType::ALL().classId();
    ASSERT_EQ(catcher.assertions().size(), 1u);
    EXPECT_EQ(catcher.raisedCount(), 1);
    EXPECT_TRUE(IsEqualGUID(id, GUID()));
}

TEST_F(CaptureValueTypesTest, UnionKeepsFirstInsertionOrderAndPrintsIt)
{
    CaptureStandard both = CaptureStandard::NTSC() | CaptureStandard::PAL_B();
    EXPECT_EQ(both.toString(), kel::String(L"NTSC (M) 7.5 IRE black, PAL (B)"));
    both += CaptureStandard::NTSC();
    EXPECT_EQ(both.size(), 2);
    EXPECT_EQ(both.toString(), kel::String(L"NTSC (M) 7.5 IRE black, PAL (B)"));
    both += CaptureStandard::SECAM_L() | CaptureStandard::PAL_B() | CaptureStandard::FM();
    EXPECT_EQ(both.toString(), kel::String(L"NTSC (M) 7.5 IRE black, PAL (B), SECAM (L), FM"));

    // The members themselves are untouched by | and by += on a copy.
    EXPECT_EQ(CaptureStandard::NTSC().toString(), kel::String(L"NTSC (M) 7.5 IRE black"));
}

TEST_F(CaptureValueTypesTest, EmptySetPrintsNoneAndContainsNothingButIsContainedEverywhere)
{
    const CaptureStandard empty;
    EXPECT_EQ(empty.toString(), kel::String(L"None"));
    EXPECT_TRUE(CaptureStandard::FM().containsAll(empty));
    EXPECT_FALSE(CaptureStandard::FM().containsAny(empty));
    EXPECT_TRUE(empty.containsAll(empty));
    EXPECT_FALSE(empty.containsAny(CaptureStandard::FM()));
    EXPECT_EQ(empty, CaptureStandard());
    EXPECT_NE(empty, CaptureStandard::FM());
}

TEST_F(CaptureValueTypesTest, ContainmentAndEqualityIgnoreOrder)
{
    const CaptureStandard ab = CaptureStandard::PAL_B() | CaptureStandard::PAL_D();
    const CaptureStandard ba = CaptureStandard::PAL_D() | CaptureStandard::PAL_B();
    EXPECT_EQ(ab, ba);
    EXPECT_NE(ab.toString(), ba.toString());
    const CaptureStandard abc = ab | CaptureStandard::PAL_I();
    EXPECT_NE(ab, abc);
    EXPECT_NE(abc, ab);
    EXPECT_TRUE(abc.containsAll(ba));
    EXPECT_FALSE(ab.containsAll(abc));
    EXPECT_TRUE(ab.containsAny(CaptureStandard::PAL_D() | CaptureStandard::SECAM_D()));
    EXPECT_FALSE(ab.containsAny(CaptureStandard::SECAM_D() | CaptureStandard::NTSC()));
    // Same size, different names.
    EXPECT_NE(ab, CaptureStandard::PAL_B() | CaptureStandard::PAL_I());
}

TEST_F(CaptureValueTypesTest, NamedStandardsCarryNoStreamTypeOrFeatureSoMergingLogsNothing)
{
    EXPECT_EQ(CaptureStandard::QAM().streamType().name(), kel::String());
    EXPECT_EQ(CaptureStandard::QAM().feature().name(), kel::String());
    const CaptureStandard mixed = CaptureStandard::ATSC() | CaptureStandard::FM() | CaptureStandard::SVIDEO();
    EXPECT_EQ(mixed.size(), 3);
    EXPECT_FALSE(log().contains(kel::String(L"mismatch")));
}

TEST_F(CaptureValueTypesTest, CapabilityPrintsTypeFeatureAndStandards)
{
    CaptureCapability analog(CaptureStreamType::ANALOG(), CaptureFeature::TVTUNING());
    analog.addStandard(CaptureStandard::NTSC());
    analog.addStandard(CaptureStandard::PAL_B());
    analog.addStandard(CaptureStandard::NTSC());
    EXPECT_EQ(analog.toString(), kel::String(L"Analog TVTuning (NTSC (M) 7.5 IRE black, PAL (B))"));
    EXPECT_EQ(analog.type(), CaptureStreamType::ANALOG());
    EXPECT_EQ(analog.feature(), CaptureFeature::TVTUNING());

    const CaptureCapability digital(CaptureStreamType::DIGITAL(), CaptureFeature::TVTUNING());
    EXPECT_EQ(digital.toString(), kel::String(L"Digital TVTuning (None)"));
    EXPECT_EQ(CaptureCapability().toString(), kel::String(L"  (None)"));
}

} // namespace
