// The system tuning spaces, their tune requests and the locators as an application meets them:
// the container by name and by ID, the configurable set of spaces, the tune request each space
// creates, locator values and copies, and the faults of these objects.
#include <windows.h>
#include <tuner.h>
#include <uuids.h>

#include <algorithm>
#include <string>
#include <vector>

#include <atlbase.h>
#include <gtest/gtest.h>

#include "BdaTestHelpers.h"
#include "LeakCheckedTest.h"
#include "lab/BdaGuids.h"
#include "lab/LabControl.h"

namespace {

using labtest::TestVariant;

const wchar_t kSpaces[] = L"System Tuning Spaces";

// A BSTR argument for one call.
class BstrArgument {
public:
    explicit BstrArgument(const wchar_t *text) : m_text(SysAllocString(text)) {}
    ~BstrArgument() { SysFreeString(m_text); }
    BstrArgument(const BstrArgument &) = delete;
    BstrArgument &operator=(const BstrArgument &) = delete;
    BSTR get() const { return m_text; }

private:
    BSTR m_text;
};

CComPtr<ITuningSpaceContainer> container()
{
    CComPtr<ITuningSpaceContainer> result;
    EXPECT_HRESULT_SUCCEEDED(result.CoCreateInstance(CLSID_SystemTuningSpaces, nullptr, CLSCTX_INPROC_SERVER));
    return result;
}

class BdaSystemTest : public labtest::LeakCheckedTest {
protected:
    void SetUp() override
    {
        LeakCheckedTest::SetUp();
        lab::clearJournal(kSpaces);
    }
};

TEST_F(BdaSystemTest, ContainerFindsSpacesByNameAndId)
{
    CComPtr<ITuningSpaceContainer> spaces = container();
    ASSERT_TRUE(spaces);
    LONG count = 0;
    ASSERT_HRESULT_SUCCEEDED(spaces->get_Count(&count));
    EXPECT_EQ(5, count);

    CComPtr<IEnumTuningSpaces> all;
    ASSERT_HRESULT_SUCCEEDED(spaces->get_EnumTuningSpaces(&all));
    EXPECT_EQ((std::vector<std::wstring>{L"ATSC", L"ATSCCable", L"ClearQAM", L"Digital Cable", L"DVB-T"}),
              labtest::names(all));

    CComPtr<ITuningSpace> atsc;
    ASSERT_HRESULT_SUCCEEDED(spaces->get_Item(TestVariant(L"ATSC").get(), &atsc));
    EXPECT_EQ(L"{0DAD2FDD-5FD7-11D3-8F50-00C04F7971E2}", labtest::networkType(atsc));
    EXPECT_TRUE(CComQIPtr<IATSCTuningSpace>(atsc));
    GUID provider = GUID_NULL;
    ASSERT_HRESULT_SUCCEEDED(CLSIDFromString(labtest::networkType(atsc).c_str(), &provider));
    EXPECT_TRUE(IsEqualCLSID(CLSID_ATSCNetworkProvider, provider));

    CComPtr<ITuningSpace> dvbt;
    ASSERT_HRESULT_SUCCEEDED(spaces->get_Item(TestVariant(5L).get(), &dvbt));
    EXPECT_EQ(L"DVB-T", labtest::uniqueName(dvbt));
    EXPECT_EQ(L"{216C62DF-6D7F-4E9A-8571-05F14EDB766A}", labtest::networkType(dvbt));
    LONG id = 0;
    ASSERT_HRESULT_SUCCEEDED(spaces->FindID(dvbt, &id));
    EXPECT_EQ(5, id);

    CComPtr<ITuningSpace> missing;
    EXPECT_EQ(E_INVALIDARG, spaces->get_Item(TestVariant(L"DVB-S").get(), &missing));
    EXPECT_EQ(E_INVALIDARG, spaces->get_Item(TestVariant(0L).get(), &missing));
    EXPECT_FALSE(missing);

    EXPECT_EQ((std::vector<std::wstring>{L"EnumTuningSpaces 5", L"Item ATSC found", L"Item 5 found", L"FindID DVB-T 5",
                                         L"Item DVB-S not found", L"Item 0 not found"}),
              lab::journal(kSpaces));
}

TEST_F(BdaSystemTest, CollectionsByClassAndNameKeepTheSystemIds)
{
    CComPtr<ITuningSpaceContainer> spaces = container();
    CComPtr<ITuningSpaces> atsc;
    ASSERT_HRESULT_SUCCEEDED(spaces->_TuningSpacesForCLSID(lab::kClsidAtscTuningSpace, &atsc));
    CComPtr<IEnumTuningSpaces> listed;
    ASSERT_HRESULT_SUCCEEDED(atsc->get_EnumTuningSpaces(&listed));
    EXPECT_EQ((std::vector<std::wstring>{L"ATSC", L"ATSCCable", L"ClearQAM"}), labtest::names(listed));
    CComPtr<ITuningSpace> third;
    ASSERT_HRESULT_SUCCEEDED(atsc->get_Item(TestVariant(3L).get(), &third));
    EXPECT_EQ(L"ClearQAM", labtest::uniqueName(third));
    CComPtr<ITuningSpace> missing;
    EXPECT_EQ(E_INVALIDARG, atsc->get_Item(TestVariant(5L).get(), &missing));

    CComPtr<ITuningSpaces> named;
    ASSERT_HRESULT_SUCCEEDED(spaces->TuningSpacesForName(BstrArgument(L"DVB-T").get(), &named));
    LONG count = 0;
    ASSERT_HRESULT_SUCCEEDED(named->get_Count(&count));
    EXPECT_EQ(1, count);
    CComPtr<ITuningSpace> dvbt;
    ASSERT_HRESULT_SUCCEEDED(named->get_Item(TestVariant(5L).get(), &dvbt));
    EXPECT_EQ(L"DVB-T", labtest::uniqueName(dvbt));
}

TEST_F(BdaSystemTest, SpacesTheSystemHoldsAreConfigurable)
{
    {
        lab::DeviceOverride scope(kSpaces, L"spaces", L"ATSC, DVB-T");
        CComPtr<ITuningSpaceContainer> spaces = container();
        LONG count = 0;
        ASSERT_HRESULT_SUCCEEDED(spaces->get_Count(&count));
        EXPECT_EQ(2, count);
        for (const wchar_t *cable : {L"ATSCCable", L"ClearQAM", L"Digital Cable"}) {
            CComPtr<ITuningSpace> space;
            EXPECT_EQ(E_INVALIDARG, spaces->get_Item(TestVariant(cable).get(), &space)) << cable;
        }
        EXPECT_TRUE(labtest::systemSpace(L"DVB-T"));
    }
    {
        lab::DeviceOverride scope(kSpaces, L"spaces", L"ATSC, ATSCCable, ClearQAM");
        EXPECT_FALSE(labtest::systemSpace(L"DVB-T"));
        EXPECT_TRUE(labtest::systemSpace(L"ClearQAM"));
    }
    EXPECT_TRUE(labtest::systemSpace(L"Digital Cable"));
}

TEST_F(BdaSystemTest, EachSpaceCreatesItsKindOfTuneRequest)
{
    for (const wchar_t *name : {L"ATSC", L"ATSCCable", L"ClearQAM", L"Digital Cable"}) {
        CComPtr<ITuningSpace> space = labtest::systemSpace(name);
        ASSERT_TRUE(space) << name;
        CComQIPtr<IATSCTuningSpace> atsc(space);
        ASSERT_TRUE(atsc) << name;
        CComPtr<ITuneRequest> request;
        ASSERT_HRESULT_SUCCEEDED(atsc->CreateTuneRequest(&request));
        CComQIPtr<IATSCChannelTuneRequest> channel(request);
        ASSERT_TRUE(channel) << name;
        EXPECT_FALSE(CComQIPtr<IDVBTuneRequest>(request));
        LONG value = 0;
        EXPECT_HRESULT_SUCCEEDED(channel->get_Channel(&value));
        EXPECT_EQ(-1, value);
        EXPECT_HRESULT_SUCCEEDED(channel->put_Channel(120));
        EXPECT_HRESULT_SUCCEEDED(channel->put_MinorChannel(3));
        CComPtr<ITuneRequest> copy;
        ASSERT_HRESULT_SUCCEEDED(request->Clone(&copy));
        CComQIPtr<IATSCChannelTuneRequest> copied(copy);
        EXPECT_HRESULT_SUCCEEDED(copied->get_Channel(&value));
        EXPECT_EQ(120, value);
        EXPECT_HRESULT_SUCCEEDED(copied->get_MinorChannel(&value));
        EXPECT_EQ(3, value);
        CComPtr<ITuningSpace> owner;
        ASSERT_HRESULT_SUCCEEDED(copy->get_TuningSpace(&owner));
        EXPECT_EQ(name, labtest::uniqueName(owner));
    }

    CComPtr<ITuningSpace> cableSpace = labtest::systemSpace(L"Digital Cable");
    CComQIPtr<IDigitalCableTuningSpace> cable(cableSpace);
    ASSERT_TRUE(cable);
    EXPECT_EQ(L"{143827AB-F77B-498D-81CA-5A007AEC28BF}", labtest::networkType(cableSpace));
    LONG maxMajor = 0;
    EXPECT_HRESULT_SUCCEEDED(cable->get_MaxMajorChannel(&maxMajor));
    EXPECT_EQ(99, maxMajor);
    CComPtr<ITuneRequest> cableRequest;
    ASSERT_HRESULT_SUCCEEDED(cable->CreateTuneRequest(&cableRequest));
    CComQIPtr<IDigitalCableTuneRequest> cableChannel(cableRequest);
    ASSERT_TRUE(cableChannel);
    ASSERT_HRESULT_SUCCEEDED(cableChannel->put_MajorChannel(12));
    ASSERT_HRESULT_SUCCEEDED(cableChannel->put_SourceID(7001));
    CComPtr<ITuneRequest> cableCopy;
    ASSERT_HRESULT_SUCCEEDED(cableRequest->Clone(&cableCopy));
    LONG major = 0;
    LONG source = 0;
    EXPECT_HRESULT_SUCCEEDED(CComQIPtr<IDigitalCableTuneRequest>(cableCopy)->get_MajorChannel(&major));
    EXPECT_HRESULT_SUCCEEDED(CComQIPtr<IDigitalCableTuneRequest>(cableCopy)->get_SourceID(&source));
    EXPECT_EQ(12, major);
    EXPECT_EQ(7001, source);

    CComPtr<ITuningSpace> space = labtest::systemSpace(L"DVB-T");
    CComQIPtr<IDVBTuningSpace2> dvb(space);
    ASSERT_TRUE(dvb);
    EXPECT_FALSE(CComQIPtr<IATSCTuningSpace>(space));
    EXPECT_HRESULT_SUCCEEDED(dvb->put_SystemType(DVB_Terrestrial));
    DVBSystemType type = DVB_Cable;
    EXPECT_HRESULT_SUCCEEDED(dvb->get_SystemType(&type));
    EXPECT_EQ(DVB_Terrestrial, type);
    CComPtr<ITuneRequest> request;
    ASSERT_HRESULT_SUCCEEDED(dvb->CreateTuneRequest(&request));
    CComQIPtr<IDVBTuneRequest> dvbRequest(request);
    ASSERT_TRUE(dvbRequest);
    EXPECT_FALSE(CComQIPtr<IATSCChannelTuneRequest>(request));
    CComPtr<ILocator> locator;
    EXPECT_HRESULT_SUCCEEDED(request->get_Locator(&locator));
    EXPECT_FALSE(locator);
    ASSERT_HRESULT_SUCCEEDED(space->get_DefaultLocator(&locator));
    CComQIPtr<IDVBTLocator> defaultLocator(locator);
    ASSERT_TRUE(defaultLocator);
    LONG bandwidth = 0;
    EXPECT_HRESULT_SUCCEEDED(defaultLocator->get_Bandwidth(&bandwidth));
    EXPECT_EQ(8, bandwidth);

    const std::vector<std::wstring> journal = lab::journal(kSpaces);
    EXPECT_NE(journal.end(), std::find(journal.begin(), journal.end(), L"SystemType DVB-T Terrestrial"));
    EXPECT_NE(journal.end(), std::find(journal.begin(), journal.end(), L"CreateTuneRequest ClearQAM"));
}

TEST_F(BdaSystemTest, LocatorsKeepTheirValuesAndCopyThem)
{
    CComPtr<IATSCLocator2> atsc;
    ASSERT_HRESULT_SUCCEEDED(atsc.CoCreateInstance(CLSID_ATSCLocator, nullptr, CLSCTX_INPROC_SERVER));
    LONG value = 0;
    ModulationType modulation = BDA_MOD_16QAM;
    EXPECT_HRESULT_SUCCEEDED(atsc->get_CarrierFrequency(&value));
    EXPECT_EQ(-1, value);
    EXPECT_HRESULT_SUCCEEDED(atsc->get_Modulation(&modulation));
    EXPECT_EQ(BDA_MOD_NOT_SET, modulation);
    ASSERT_HRESULT_SUCCEEDED(atsc->put_CarrierFrequency(91250));
    ASSERT_HRESULT_SUCCEEDED(atsc->put_Modulation(BDA_MOD_256QAM));
    ASSERT_HRESULT_SUCCEEDED(atsc->put_ProgramNumber(3));
    ASSERT_HRESULT_SUCCEEDED(atsc->put_PhysicalChannel(95));
    ASSERT_HRESULT_SUCCEEDED(atsc->put_TSID(0x1234));
    CComPtr<ILocator> copy;
    ASSERT_HRESULT_SUCCEEDED(atsc->Clone(&copy));
    CComQIPtr<IATSCLocator2> atscCopy(copy);
    ASSERT_TRUE(atscCopy);
    ASSERT_HRESULT_SUCCEEDED(atsc->put_CarrierFrequency(55250));
    EXPECT_HRESULT_SUCCEEDED(atscCopy->get_CarrierFrequency(&value));
    EXPECT_EQ(91250, value);
    EXPECT_HRESULT_SUCCEEDED(atscCopy->get_ProgramNumber(&value));
    EXPECT_EQ(3, value);
    EXPECT_HRESULT_SUCCEEDED(atscCopy->get_PhysicalChannel(&value));
    EXPECT_EQ(95, value);
    EXPECT_HRESULT_SUCCEEDED(atscCopy->get_TSID(&value));
    EXPECT_EQ(0x1234, value);
    EXPECT_HRESULT_SUCCEEDED(atscCopy->get_Modulation(&modulation));
    EXPECT_EQ(BDA_MOD_256QAM, modulation);
    EXPECT_EQ(E_POINTER, atsc->get_ProgramNumber(nullptr));

    CComPtr<IDVBTLocator> dvbt;
    ASSERT_HRESULT_SUCCEEDED(dvbt.CoCreateInstance(CLSID_DVBTLocator, nullptr, CLSCTX_INPROC_SERVER));
    EXPECT_FALSE(CComQIPtr<IATSCLocator>(dvbt));
    GuardInterval guard = BDA_GUARD_1_4;
    EXPECT_HRESULT_SUCCEEDED(dvbt->get_Guard(&guard));
    EXPECT_EQ(BDA_GUARD_NOT_SET, guard);
    ASSERT_HRESULT_SUCCEEDED(dvbt->put_Bandwidth(7));
    ASSERT_HRESULT_SUCCEEDED(dvbt->put_Guard(BDA_GUARD_1_8));
    ASSERT_HRESULT_SUCCEEDED(dvbt->put_Mode(BDA_XMIT_MODE_8K));
    ASSERT_HRESULT_SUCCEEDED(dvbt->put_CarrierFrequency(177500));
    copy.Release();
    ASSERT_HRESULT_SUCCEEDED(dvbt->Clone(&copy));
    CComQIPtr<IDVBTLocator> dvbtCopy(copy);
    ASSERT_TRUE(dvbtCopy);
    EXPECT_HRESULT_SUCCEEDED(dvbtCopy->get_Bandwidth(&value));
    EXPECT_EQ(7, value);
    EXPECT_HRESULT_SUCCEEDED(dvbtCopy->get_CarrierFrequency(&value));
    EXPECT_EQ(177500, value);
    EXPECT_HRESULT_SUCCEEDED(dvbtCopy->get_Guard(&guard));
    EXPECT_EQ(BDA_GUARD_1_8, guard);
    TransmissionMode mode = BDA_XMIT_MODE_2K;
    EXPECT_HRESULT_SUCCEEDED(dvbtCopy->get_Mode(&mode));
    EXPECT_EQ(BDA_XMIT_MODE_8K, mode);
}

TEST_F(BdaSystemTest, FaultsRefuseTheirCalls)
{
    CComPtr<ITuningSpace> space = labtest::systemSpace(L"DVB-T");
    ASSERT_TRUE(space);
    lab::clearJournal(kSpaces);
    {
        lab::DeviceOverride scope(kSpaces, L"fault.CreateTuneRequest", L"0x80004005");
        scope.set(L"fault.put_SystemType", L"0x80070005");
        CComPtr<ITuneRequest> request;
        EXPECT_EQ(E_FAIL, space->CreateTuneRequest(&request));
        EXPECT_FALSE(request);
        EXPECT_EQ(E_ACCESSDENIED, CComQIPtr<IDVBTuningSpace2>(space)->put_SystemType(DVB_Terrestrial));
    }
    {
        lab::DeviceOverride scope(kSpaces, L"fault.get_Item", L"0x8007000E");
        CComPtr<ITuningSpace> found;
        EXPECT_EQ(E_OUTOFMEMORY, container()->get_Item(TestVariant(L"ATSC").get(), &found));
    }
    EXPECT_EQ((std::vector<std::wstring>{L"CreateTuneRequest DVB-T failed 0x80004005",
                                         L"SystemType DVB-T Terrestrial failed 0x80070005", L"Item failed 0x8007000E"}),
              lab::journal(kSpaces));
}

} // namespace
