// The MPEG-2 demultiplexer behind a simulated BDA card, as a digital-TV application uses it:
// the raw stream passing through a sample grabber (buffer callback and current buffer), the
// demultiplexer's output pins appearing for the transport stream, the video pin rendered
// through the lab's MPEG-2 decoder to a picture naming the channel, program and frame, and the
// sections pin carrying the stream's tables.
#include <windows.h>
#include <dshow.h>
#include <dvdmedia.h>
#include <qedit.h>

#include <string>
#include <vector>

#include <atlbase.h>
#include <gtest/gtest.h>

#include "BdaGraph.h"
#include "common/MediaType.h"
#include "FrameCollector.h"
#include "LabGraph.h"
#include "LeakCheckedTest.h"
#include "WaitFor.h"
#include "lab/ChannelMark.h"
#include "lab/LabClassIds.h"
#include "lab/LabControl.h"

namespace {

const wchar_t kTuner[] = L"Lab ATSC QAM Tuner";
const wchar_t kReceiver[] = L"Lab ATSC QAM Receiver";

int pinCount(IBaseFilter *filter)
{
    CComPtr<IEnumPins> pins;
    EXPECT_HRESULT_SUCCEEDED(filter->EnumPins(&pins));
    int count = 0;
    for (CComPtr<IPin> pin; pins && pins->Next(1, &pin, nullptr) == S_OK; pin.Release())
        ++count;
    return count;
}

GUID majorTypeOf(IPin *pin)
{
    CComPtr<IEnumMediaTypes> types;
    GUID major = GUID_NULL;
    AM_MEDIA_TYPE *type = nullptr;
    if (SUCCEEDED(pin->EnumMediaTypes(&types)) && types->Next(1, &type, nullptr) == S_OK) {
        major = type->majortype;
        lab::MediaType::deleteType(type);
    }
    return major;
}

bool graphHolds(IGraphBuilder *graph, const CLSID &clsid)
{
    CComPtr<IEnumFilters> filters;
    if (FAILED(graph->EnumFilters(&filters)))
        return false;
    for (CComPtr<IBaseFilter> filter; filters->Next(1, &filter, nullptr) == S_OK; filter.Release()) {
        CLSID found = GUID_NULL;
        if (SUCCEEDED(filter->GetClassID(&found)) && IsEqualCLSID(found, clsid))
            return true;
    }
    return false;
}

// A sample grabber asking for `major`/`sub` behind a demultiplexer pin, with a null renderer.
class PinTap {
public:
    PinTap(IGraphBuilder *graph, IPin *output, const GUID &major, const GUID &sub) : m_graph(graph)
    {
        m_hr = m_grabberFilter.CoCreateInstance(CLSID_SampleGrabber, nullptr, CLSCTX_INPROC_SERVER);
        if (SUCCEEDED(m_hr))
            m_hr = graph->AddFilter(m_grabberFilter, L"Tap");
        if (SUCCEEDED(m_hr))
            m_hr = m_grabberFilter->QueryInterface(&m_grabber);
        AM_MEDIA_TYPE wanted = {};
        wanted.majortype = major;
        wanted.subtype = sub;
        if (SUCCEEDED(m_hr))
            m_hr = m_grabber->SetMediaType(&wanted);
        collector = new labtest::FrameCollector();
        if (SUCCEEDED(m_hr))
            m_hr = m_grabber->SetCallback(collector, 0);
        if (SUCCEEDED(m_hr))
            m_hr = m_sink.CoCreateInstance(CLSID_NullRenderer, nullptr, CLSCTX_INPROC_SERVER);
        if (SUCCEEDED(m_hr))
            m_hr = graph->AddFilter(m_sink, L"Tap Sink");
        CComPtr<IPin> grabberIn;
        grabberIn.Attach(labtest::firstPin(m_grabberFilter, PINDIR_INPUT));
        CComPtr<IPin> grabberOut;
        grabberOut.Attach(labtest::firstPin(m_grabberFilter, PINDIR_OUTPUT));
        CComPtr<IPin> sinkIn;
        sinkIn.Attach(labtest::firstPin(m_sink, PINDIR_INPUT));
        // Intelligent connect: a decoder goes in between when the types differ.
        if (SUCCEEDED(m_hr))
            m_hr = graph->Connect(output, grabberIn);
        if (SUCCEEDED(m_hr))
            m_hr = graph->ConnectDirect(grabberOut, sinkIn, nullptr);
    }
    ~PinTap()
    {
        if (m_grabber)
            m_grabber->SetCallback(nullptr, 0);
    }

    HRESULT result() const { return m_hr; }
    HRESULT connectedType(AM_MEDIA_TYPE &type) { return m_grabber->GetConnectedMediaType(&type); }

    CComPtr<labtest::FrameCollector> collector;

private:
    HRESULT m_hr = E_FAIL;
    IGraphBuilder *m_graph;
    CComPtr<IBaseFilter> m_grabberFilter;
    CComPtr<ISampleGrabber> m_grabber;
    CComPtr<IBaseFilter> m_sink;
};

bool waitFor(const labtest::FrameCollector &collector, size_t count)
{
    return labtest::waitFor([&collector, count] { return collector.count() >= count; });
}

class DemuxTest : public labtest::LeakCheckedTest {
protected:
    void SetUp() override
    {
        LeakCheckedTest::SetUp();
        lab::clearJournal(kTuner);
        lab::clearJournal(kReceiver);
    }
    void TearDown() override
    {
        m_graph.tearDown();
        LeakCheckedTest::TearDown();
    }

    labtest::BdaGraph m_graph;
};

TEST_F(DemuxTest, OutputPinsAppearWithTheTransportStream)
{
    CComPtr<IBaseFilter> demux;
    ASSERT_HRESULT_SUCCEEDED(demux.CoCreateInstance(CLSID_MPEG2Demultiplexer, nullptr, CLSCTX_INPROC_SERVER));
    EXPECT_EQ(1, pinCount(demux));
    demux.Release();

    ASSERT_HRESULT_SUCCEEDED(m_graph.buildWithDemux(kTuner, kReceiver));
    EXPECT_EQ(4, pinCount(m_graph.demux));
    const CComPtr<IPin> video = m_graph.demuxPin(L"Video");
    const CComPtr<IPin> audio = m_graph.demuxPin(L"Audio");
    const CComPtr<IPin> sections = m_graph.demuxPin(L"Sections");
    ASSERT_TRUE(video && audio && sections);
    EXPECT_TRUE(IsEqualGUID(MEDIATYPE_Video, majorTypeOf(video)));
    EXPECT_TRUE(IsEqualGUID(MEDIATYPE_Audio, majorTypeOf(audio)));
    EXPECT_TRUE(IsEqualGUID(MEDIATYPE_MPEG2_SECTIONS, majorTypeOf(sections)));
}

TEST_F(DemuxTest, VideoPinRendersThePictureOfTheTunedProgram)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.buildWithDemux(kTuner, kReceiver));
    const CComPtr<IPin> video = m_graph.demuxPin(L"Video");
    ASSERT_TRUE(video);
    PinTap tap(m_graph.graph, video, MEDIATYPE_Video, MEDIASUBTYPE_RGB32);
    ASSERT_HRESULT_SUCCEEDED(tap.result());
    EXPECT_TRUE(graphHolds(m_graph.graph, lab::CLSID_LabMpeg2VideoDecoder));

    // Cable channel 4: program 1 is scrambled, so the video follows program 2.
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(67250, BDA_MOD_256QAM));
    ASSERT_HRESULT_SUCCEEDED(m_graph.run());
    const bool enough = waitFor(*tap.collector, 4);
    // The raw stream passes the upstream grabber: its current buffer holds transport packets.
    long size = 0;
    EXPECT_HRESULT_SUCCEEDED(m_graph.grabber->GetCurrentBuffer(&size, nullptr));
    std::vector<long> buffer(static_cast<size_t>(size + 3) / 4);
    EXPECT_HRESULT_SUCCEEDED(m_graph.grabber->GetCurrentBuffer(&size, buffer.data()));
    m_graph.stop();
    ASSERT_TRUE(enough);
    ASSERT_GT(size, 0);
    EXPECT_EQ(0, size % 188);
    EXPECT_EQ(0x47, reinterpret_cast<const BYTE *>(buffer.data())[0]);
    EXPECT_GT(m_graph.collector->calls(), 0u);

    AM_MEDIA_TYPE type = {};
    ASSERT_HRESULT_SUCCEEDED(tap.connectedType(type));
    const BITMAPINFOHEADER header = reinterpret_cast<const VIDEOINFOHEADER *>(type.pbFormat)->bmiHeader;
    lab::MediaType::freeContents(type);
    EXPECT_EQ(320, header.biWidth);
    EXPECT_EQ(240, std::abs(header.biHeight));

    unsigned long previous = 0;
    const std::vector<labtest::CollectedSample> frames = tap.collector->samples();
    for (size_t i = 0; i < frames.size(); ++i) {
        const lab::FrameView view{frames[i].data.data(),     static_cast<long>(frames[i].data.size()),
                                  lab::PixelLayout::Rgb32,   header.biWidth,
                                  std::abs(header.biHeight), header.biHeight > 0};
        unsigned long frame = 0;
        unsigned long channel = 0;
        unsigned long program = 0;
        ASSERT_TRUE(lab::readFrameNumber(view, frame));
        ASSERT_TRUE(lab::readChannelNumber(view, channel));
        ASSERT_TRUE(lab::readProgramNumber(view, program));
        EXPECT_EQ(4u, channel);
        EXPECT_EQ(2u, program);
        if (i > 0) {
            EXPECT_GT(frame, previous);
        }
        previous = frame;
    }
}

// As an application renders it: IGraphBuilder::Render of the pin alone, the decoder and Wine's
// GDI video renderer chosen by intelligent connect.
TEST_F(DemuxTest, VideoPinRendersToTheVideoRenderer)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.buildWithDemux(kTuner, kReceiver));
    const CComPtr<IPin> video = m_graph.demuxPin(L"Video");
    ASSERT_TRUE(video);
    ASSERT_HRESULT_SUCCEEDED(m_graph.graph->Render(video));
    EXPECT_TRUE(graphHolds(m_graph.graph, lab::CLSID_LabMpeg2VideoDecoder));
    EXPECT_TRUE(graphHolds(m_graph.graph, CLSID_VideoRenderer));
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(55250, BDA_MOD_256QAM));
    EXPECT_FALSE(m_graph.receive(188 * 400).empty());
}

TEST_F(DemuxTest, SectionsPinCarriesTheTables)
{
    ASSERT_HRESULT_SUCCEEDED(m_graph.buildWithDemux(kTuner, kReceiver));
    const CComPtr<IPin> sections = m_graph.demuxPin(L"Sections");
    ASSERT_TRUE(sections);
    PinTap tap(m_graph.graph, sections, MEDIATYPE_MPEG2_SECTIONS, GUID_NULL);
    ASSERT_HRESULT_SUCCEEDED(tap.result());
    ASSERT_HRESULT_SUCCEEDED(m_graph.tune(769250, BDA_MOD_256QAM));
    ASSERT_HRESULT_SUCCEEDED(m_graph.run());
    const bool enough = waitFor(*tap.collector, 4);
    m_graph.stop();
    ASSERT_TRUE(enough);
    bool sawPat = false;
    bool sawPmt = false;
    for (const labtest::CollectedSample &section : tap.collector->samples()) {
        ASSERT_GE(section.data.size(), 12u);
        sawPat = sawPat || section.data[0] == 0x00;
        // The PMT of program 7.
        sawPmt = sawPmt || (section.data[0] == 0x02 && section.data[3] == 0x00 && section.data[4] == 0x07);
    }
    EXPECT_TRUE(sawPat);
    EXPECT_TRUE(sawPmt);
}

} // namespace
