// CaptureUtil helpers: identifier parsing, default country, class-identifier text,
// media-type copies and their owners, pin tests and dumps on Wine's own filters.
#include "FrameworkTest.h"

#include <CaptureUtil.h>
#include <InPlaceMediaType.h>
#include <MediaTypeOwner.h>
#include <SdkGuids.h>
#include <gtest/gtest.h>
#include <kel/KELLocale.h>
#include <amvideo.h>
#include <dshow.h>
#include <cstring>
#include <string>

namespace {

using sorvane::CaptureUtil;
using sorvane::InPlaceMediaType;
using sorvane::MediaTypeOwner;

// An owner object for media types whose reference count the test can read.
class CountedUnknown : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void **out) override
    {
        if (!out)
            return E_POINTER;
        *out = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown))
            return E_NOINTERFACE;
        *out = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&m_count); }
    STDMETHODIMP_(ULONG) Release() override { return InterlockedDecrement(&m_count); }
    long count() const { return m_count; }

private:
    volatile long m_count = 1;
};

// A 640x480 YUY2 media type whose format block lives in the test.
struct VideoType {
    VIDEOINFOHEADER format = {};
    AM_MEDIA_TYPE type = {};

    VideoType()
    {
        format.AvgTimePerFrame = 333333;
        format.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        format.bmiHeader.biWidth = 640;
        format.bmiHeader.biHeight = 480;
        format.bmiHeader.biBitCount = 16;
        type.majortype = MEDIATYPE_Video;
        type.subtype = MEDIASUBTYPE_YUY2;
        type.formattype = FORMAT_VideoInfo;
        type.bFixedSizeSamples = TRUE;
        type.lSampleSize = 640 * 480 * 2;
        type.cbFormat = sizeof(format);
        type.pbFormat = reinterpret_cast<BYTE *>(&format);
    }
};

// What IPin::ConnectionMediaType does to its argument: a task-memory format block and a
// reference on the owner, both handed to the caller.
void fillAsACallWould(AM_MEDIA_TYPE *slot, const AM_MEDIA_TYPE &source)
{
    *slot = source;
    slot->pbFormat = static_cast<BYTE *>(CoTaskMemAlloc(source.cbFormat));
    std::memcpy(slot->pbFormat, source.pbFormat, source.cbFormat);
    if (slot->pUnk)
        slot->pUnk->AddRef();
}

class CaptureUtilTest : public sorvane::test::FrameworkTest {
protected:
    void SetUp() override
    {
        FrameworkTest::SetUp();
        ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    }
    void TearDown() override
    {
        kel::KELLocale::resetGlobalLocale();
        CoUninitialize();
        FrameworkTest::TearDown();
    }
};

class ScopedLanguage {
public:
    explicit ScopedLanguage(const wchar_t *tag)
    {
        kel::KELLocale::setGlobalLocale(kel::KELLocale(kel::Language(kel::String(tag))));
    }
    ~ScopedLanguage() { kel::KELLocale::resetGlobalLocale(); }
};

int countryFor(const wchar_t *tag)
{
    ScopedLanguage language(tag);
    return CaptureUtil::getDefaultCountryCode();
}

TEST_F(CaptureUtilTest, AlphaNumIsAsciiOnly)
{
    for (wchar_t c : std::wstring(L"09AZaz"))
        EXPECT_TRUE(CaptureUtil::isAlphaNum(c)) << c;
    for (wchar_t c : std::wstring(L"&#_-/ @[`{\x00e9\x00c4\x0660"))
        EXPECT_FALSE(CaptureUtil::isAlphaNum(c)) << c;
}

const std::wstring kNoMarker = L"<no marker>";

// The code found after a marker, or kNoMarker when the marker is absent (and the code
// argument was left alone).
std::wstring codeAfter(const wchar_t *marker, const wchar_t *text)
{
    kel::String code(L"untouched");
    if (CaptureUtil::getCodeAfter(kel::String(marker), kel::String(text), code))
        return code.wstr();
    EXPECT_EQ(code, kel::String(L"untouched"));
    return kNoMarker;
}

TEST_F(CaptureUtilTest, CodeAfterMarkerRunsToTheFirstNonAsciiAlphaNum)
{
    EXPECT_EQ(codeAfter(L"VID_", L"USB\\PID_0001"), kNoMarker);
    EXPECT_EQ(codeAfter(L"VID_", L"USB\\VID_046D&PID_0825"), L"046D");
    EXPECT_EQ(codeAfter(L"PID_", L"USB\\VID_046D&PID_0825#6&1"), L"0825");
    EXPECT_EQ(codeAfter(L"REV_", L"PCI\\REV_0A_X"), L"0A");
    EXPECT_EQ(codeAfter(L"DEV_", L"DEV_12\x00e9"), L"12");
    // Only the first occurrence counts.
    EXPECT_EQ(codeAfter(L"_", L"A_B1&C_D2"), L"B1");
    // A marker at the very end, or followed by a separator, gives an empty code.
    EXPECT_EQ(codeAfter(L"SUBSYS_", L"PCI\\SUBSYS_"), L"");
    EXPECT_EQ(codeAfter(L"VEN_", L"VEN_&DEV"), L"");
}

TEST_F(CaptureUtilTest, DefaultCountryFollowsTheGlobalLanguage)
{
    EXPECT_EQ(countryFor(L"en"), 1);
    EXPECT_EQ(countryFor(L"zh-cn"), 86);
    EXPECT_EQ(countryFor(L"zh-tw"), 852);
    EXPECT_EQ(countryFor(L"de"), 49);
    EXPECT_EQ(countryFor(L"ru"), 7);
    EXPECT_EQ(countryFor(L"tr"), 90);
    EXPECT_EQ(countryFor(L"ko"), 82);
    EXPECT_EQ(countryFor(L"en-gb"), 1);
    EXPECT_EQ(countryFor(L"zh-hk"), 1);
    EXPECT_EQ(countryFor(L"pt-br"), 1);
    EXPECT_EQ(countryFor(L"xx"), 1);
}

TEST_F(CaptureUtilTest, ClassIdentifierTextIsTheBracedRegistryForm)
{
    EXPECT_EQ(CaptureUtil::CLSIDToString(CLSID_VideoInputDeviceCategory),
              kel::String(L"{860BB310-5D01-11D0-BD3B-00A0C911CE86}"));
    EXPECT_EQ(CaptureUtil::CLSIDToString(GUID()), kel::String(L"{00000000-0000-0000-0000-000000000000}"));
}

TEST_F(CaptureUtilTest, CopyIsDeepAndHoldsAReferenceOnTheOwner)
{
    VideoType source;
    CountedUnknown owner;
    source.type.pUnk = &owner;

    AM_MEDIA_TYPE *copy = CaptureUtil::createMediaType(&source.type);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(owner.count(), 2);
    EXPECT_EQ(copy->pUnk, &owner);
    EXPECT_TRUE(IsEqualGUID(copy->subtype, MEDIASUBTYPE_YUY2));
    EXPECT_EQ(copy->lSampleSize, 640u * 480u * 2u);
    ASSERT_EQ(copy->cbFormat, sizeof(VIDEOINFOHEADER));
    ASSERT_NE(copy->pbFormat, source.type.pbFormat);
    EXPECT_EQ(std::memcmp(copy->pbFormat, &source.format, sizeof(VIDEOINFOHEADER)), 0);

    // Changing the source afterwards leaves the copy alone.
    source.format.bmiHeader.biWidth = 320;
    EXPECT_EQ(reinterpret_cast<VIDEOINFOHEADER *>(copy->pbFormat)->bmiHeader.biWidth, 640);

    CaptureUtil::deleteMediaType(copy);
    EXPECT_EQ(owner.count(), 1);
}

TEST_F(CaptureUtilTest, CopyOfNothingIsNothingAndAnEmptyFormatIsNotShared)
{
    EXPECT_EQ(CaptureUtil::createMediaType(nullptr), nullptr);
    CaptureUtil::deleteMediaType(nullptr);

    VideoType source;
    source.type.cbFormat = 0;
    MediaTypeOwner copy(CaptureUtil::createMediaType(&source.type));
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->cbFormat, 0u);
    EXPECT_EQ(copy->pbFormat, nullptr);
    EXPECT_EQ(copy->pUnk, nullptr);

    // A format size without a block is refused rather than read.
    source.type.cbFormat = 88;
    source.type.pbFormat = nullptr;
    EXPECT_EQ(CaptureUtil::createMediaType(&source.type), nullptr);
}

TEST_F(CaptureUtilTest, OwnersReleaseWhatTheyHold)
{
    VideoType source;
    CountedUnknown owner;
    source.type.pUnk = &owner;
    {
        MediaTypeOwner first(CaptureUtil::createMediaType(&source.type));
        MediaTypeOwner second(CaptureUtil::createMediaType(&source.type));
        EXPECT_EQ(owner.count(), 3);
        first = std::move(second);
        EXPECT_EQ(owner.count(), 2);
        EXPECT_FALSE(second);
        *first.receive() = CaptureUtil::createMediaType(&source.type);
        EXPECT_EQ(owner.count(), 2);
    }
    EXPECT_EQ(owner.count(), 1);

    AM_MEDIA_TYPE *kept = nullptr;
    {
        MediaTypeOwner released(CaptureUtil::createMediaType(&source.type));
        kept = released.release();
    }
    EXPECT_EQ(owner.count(), 2);
    CaptureUtil::deleteMediaType(kept);
    EXPECT_EQ(owner.count(), 1);

    {
        InPlaceMediaType filled;
        fillAsACallWould(filled.receive(), source.type);
        EXPECT_EQ(owner.count(), 2);
        // Filling it again frees what the first call handed over.
        fillAsACallWould(filled.receive(), source.type);
        EXPECT_EQ(owner.count(), 2);
        EXPECT_EQ(filled->cbFormat, sizeof(VIDEOINFOHEADER));
    }
    EXPECT_EQ(owner.count(), 1);
}

class WineFiltersTest : public CaptureUtilTest {
protected:
    void SetUp() override
    {
        CaptureUtilTest::SetUp();
        ASSERT_EQ(graph.CoCreateInstance(CLSID_FilterGraph), S_OK);
        ASSERT_EQ(grabber.CoCreateInstance(CLSID_SampleGrabber), S_OK);
        ASSERT_EQ(renderer.CoCreateInstance(CLSID_NullRenderer), S_OK);
        ASSERT_EQ(graph->AddFilter(grabber, L"Grabber"), S_OK);
        ASSERT_EQ(graph->AddFilter(renderer, L"Sink"), S_OK);
        ASSERT_EQ(grabber->FindPin(L"In", &grabberIn), S_OK);
        ASSERT_EQ(grabber->FindPin(L"Out", &grabberOut), S_OK);
        ASSERT_EQ(renderer->FindPin(L"In", &rendererIn), S_OK);
    }

    // The grabber's output connects only once its input has a source: Wine's file
    // source reading this test program gives it one.
    void connectGrabber()
    {
        CComPtr<IBaseFilter> source;
        ASSERT_EQ(source.CoCreateInstance(CLSID_AsyncReader), S_OK);
        CComQIPtr<IFileSourceFilter> file(source);
        ASSERT_TRUE(file);
        wchar_t path[MAX_PATH] = {};
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        ASSERT_EQ(file->Load(path, nullptr), S_OK);
        ASSERT_EQ(graph->AddFilter(source, L"Source"), S_OK);
        CComPtr<IPin> sourceOut;
        ASSERT_EQ(source->FindPin(L"Output", &sourceOut), S_OK);
        ASSERT_EQ(graph->ConnectDirect(sourceOut, grabberIn, nullptr), S_OK);
        // The grabber passes its input's type on; the null renderer takes anything.
        ASSERT_EQ(graph->ConnectDirect(grabberOut, rendererIn, nullptr), S_OK);
    }
    void TearDown() override
    {
        rendererIn.Release();
        grabberOut.Release();
        grabberIn.Release();
        renderer.Release();
        grabber.Release();
        graph.Release();
        CaptureUtilTest::TearDown();
    }

    CComPtr<IGraphBuilder> graph;
    CComPtr<IBaseFilter> grabber;
    CComPtr<IBaseFilter> renderer;
    CComPtr<IPin> grabberIn;
    CComPtr<IPin> grabberOut;
    CComPtr<IPin> rendererIn;
};

TEST_F(WineFiltersTest, OnlyAnUnconnectedOutputPinCounts)
{
    EXPECT_TRUE(CaptureUtil::isUnconnectedOutputPin(grabberOut));
    EXPECT_FALSE(CaptureUtil::isUnconnectedOutputPin(grabberIn));
    EXPECT_FALSE(CaptureUtil::isUnconnectedOutputPin(rendererIn));

    connectGrabber();
    EXPECT_FALSE(CaptureUtil::isUnconnectedOutputPin(grabberOut));
    EXPECT_FALSE(CaptureUtil::isUnconnectedOutputPin(grabberIn));
}

TEST_F(WineFiltersTest, NamesAndDumpsDescribeTheGraph)
{
    EXPECT_EQ(CaptureUtil::filterName(grabber), kel::String(L"Grabber"));
    EXPECT_EQ(CaptureUtil::filterName(nullptr), kel::String());

    connectGrabber();
    const std::string dump = sorvane::test::narrow(CaptureUtil::graphToString(graph));
    EXPECT_NE(
        dump.find("\"Source\" CLSID_AsyncReader\n    out \"Output\" -> \"Grabber\".\"Input\" [MEDIATYPE_Stream, "),
        std::string::npos)
        << dump;
    EXPECT_NE(dump.find("\"Grabber\" CLSID_SampleGrabber\n"), std::string::npos) << dump;
    EXPECT_NE(dump.find("    in  \"Input\" (connected)\n"), std::string::npos) << dump;
    EXPECT_NE(dump.find("    out \"Output\" -> \"Sink\".\"In\" [MEDIATYPE_Stream, "), std::string::npos) << dump;
    EXPECT_NE(dump.find("\"Sink\" CLSID_NullRenderer\n    in  \"In\" (connected)\n"), std::string::npos) << dump;
}

TEST_F(CaptureUtilTest, DiagnosticNamesAreStable)
{
    EXPECT_EQ(CaptureUtil::subTypeToString(MEDIASUBTYPE_MJPG), kel::String(L"MEDIASUBTYPE_MJPG"));
    EXPECT_EQ(CaptureUtil::formatTypeToString(FORMAT_VideoInfo2), kel::String(L"FORMAT_VideoInfo2"));
    EXPECT_EQ(CaptureUtil::guidName(KSCATEGORY_BDA_NETWORK_TUNER), kel::String(L"KSCATEGORY_BDA_NETWORK_TUNER"));
    GUID h264 = MEDIASUBTYPE_YUY2;
    h264.Data1 = MAKEFOURCC('H', '2', '6', '4');
    EXPECT_EQ(CaptureUtil::subTypeToString(h264), kel::String(L"FOURCC H264"));
    const GUID unknown = {0x12345678, 0x1234, 0x5678, {1, 2, 3, 4, 5, 6, 7, 8}};
    EXPECT_EQ(CaptureUtil::guidName(unknown), kel::String(L"{12345678-1234-5678-0102-030405060708}"));
    EXPECT_EQ(CaptureUtil::tunerTypeToString(TunerInputCable), kel::String(L"Cable"));
    EXPECT_EQ(CaptureUtil::tunerTypeToString(TunerInputAntenna), kel::String(L"Antenna"));
    const VideoType video;
    EXPECT_EQ(CaptureUtil::mediaTypeToString(&video.type),
              kel::String(L"MEDIATYPE_Video, MEDIASUBTYPE_YUY2, FORMAT_VideoInfo, 640x480, 16 bit, 30.00 fps"));
    EXPECT_EQ(CaptureUtil::mediaTypeToString(nullptr), kel::String(L"(no media type)"));
    EXPECT_EQ(CaptureUtil::addGraphToRot(nullptr, nullptr), 0);
}

} // namespace
