// The analog TV cards as a library meets them: the tuner and the crossbar found from the capture
// filter through the capture graph builder, signal answered from the channel map per input
// type and from the FM stations per frequency, and what was done journaled.
#include <windows.h>
#include <dshow.h>

#include <algorithm>
#include <string>
#include <vector>

#include <atlbase.h>
#include <gtest/gtest.h>

#include "LabGraph.h"
#include "LeakCheckedTest.h"
#include "WaitFor.h"
#include "lab/FrameMark.h"
#include "lab/LabControl.h"

namespace {

const wchar_t kTunerCard[] = L"Lab Analog TV Tuner";
const wchar_t kCaptureCard[] = L"Lab Analog Capture Card";

// A graph holding one card, with the capture graph builder set on it.
class CardGraph {
public:
    explicit CardGraph(const wchar_t *device)
    {
        m_graph.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER);
        m_builder.CoCreateInstance(CLSID_CaptureGraphBuilder2, nullptr, CLSCTX_INPROC_SERVER);
        if (m_graph && m_builder && SUCCEEDED(labtest::bindDevice(device, filter))) {
            m_builder->SetFiltergraph(m_graph);
            m_graph->AddFilter(filter, L"Video Capture");
        }
    }
    ~CardGraph()
    {
        tuner.Release();
        crossbar.Release();
        if (m_graph && filter)
            m_graph->RemoveFilter(filter);
        filter.Release();
    }

    template <class Interface>
    HRESULT find(const GUID *category, CComPtr<Interface> &out)
    {
        return m_builder->FindInterface(category, nullptr, filter, IID_PPV_ARGS(&out));
    }

    HRESULT renderToNull(const GUID &majorType)
    {
        CComPtr<IBaseFilter> renderer;
        HRESULT hr = renderer.CoCreateInstance(CLSID_NullRenderer, nullptr, CLSCTX_INPROC_SERVER);
        if (SUCCEEDED(hr))
            hr = m_graph->AddFilter(renderer, nullptr);
        if (SUCCEEDED(hr))
            hr = m_builder->RenderStream(&PIN_CATEGORY_CAPTURE, &majorType, filter, nullptr, renderer);
        return hr;
    }

    CComQIPtr<IMediaControl> control() { return CComQIPtr<IMediaControl>(m_graph); }

    CComPtr<IBaseFilter> filter;
    CComPtr<IAMTVTuner> tuner;
    CComPtr<IAMCrossbar> crossbar;

private:
    CComPtr<IGraphBuilder> m_graph;
    CComPtr<ICaptureGraphBuilder2> m_builder;
};

long strength(IAMTVTuner *tuner)
{
    long value = -100;
    EXPECT_HRESULT_SUCCEEDED(tuner->SignalPresent(&value));
    return value;
}

long tunedStrength(IAMTVTuner *tuner, long channel, TunerInputType input)
{
    EXPECT_HRESULT_SUCCEEDED(tuner->put_InputType(0, input));
    EXPECT_HRESULT_SUCCEEDED(tuner->put_Channel(channel, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT));
    return strength(tuner);
}

class TunerTest : public labtest::LeakCheckedTest {
protected:
    void SetUp() override
    {
        LeakCheckedTest::SetUp();
        lab::clearJournal(kTunerCard);
        lab::clearJournal(kCaptureCard);
    }
};

TEST_F(TunerTest, CaptureFilterLeadsToTunerAndCrossbar)
{
    CardGraph card(kTunerCard);
    ASSERT_TRUE(card.filter);
    EXPECT_HRESULT_SUCCEEDED(card.find(&PIN_CATEGORY_CAPTURE, card.tuner));
    EXPECT_HRESULT_SUCCEEDED(card.find(&PIN_CATEGORY_CAPTURE, card.crossbar));
    card.tuner.Release();
    EXPECT_HRESULT_SUCCEEDED(card.find(nullptr, card.tuner));

    long modes = 0;
    ASSERT_HRESULT_SUCCEEDED(card.tuner->GetAvailableModes(&modes));
    EXPECT_EQ(AMTUNER_MODE_TV | AMTUNER_MODE_FM_RADIO, modes);
    long formats = 0;
    ASSERT_HRESULT_SUCCEEDED(card.tuner->get_AvailableTVFormats(&formats));
    EXPECT_EQ(AnalogVideo_NTSC_M | AnalogVideo_PAL_B | AnalogVideo_PAL_G | AnalogVideo_SECAM_L, formats);
    EXPECT_HRESULT_SUCCEEDED(card.tuner->put_CountryCode(49));
    long country = 0;
    EXPECT_HRESULT_SUCCEEDED(card.tuner->get_CountryCode(&country));
    EXPECT_EQ(49, country);
    EXPECT_TRUE(lab::journalHas(kTunerCard, L"CountryCode 49"));
}

TEST_F(TunerTest, CardWithoutTunerHasOnlyTheCrossbar)
{
    CardGraph card(kCaptureCard);
    ASSERT_TRUE(card.filter);
    EXPECT_HRESULT_FAILED(card.find(&PIN_CATEGORY_CAPTURE, card.tuner));
    EXPECT_FALSE(card.tuner);
    ASSERT_HRESULT_SUCCEEDED(card.find(&PIN_CATEGORY_CAPTURE, card.crossbar));
    long outputs = 0;
    long inputs = 0;
    ASSERT_HRESULT_SUCCEEDED(card.crossbar->get_PinCounts(&outputs, &inputs));
    EXPECT_EQ(2, outputs);
    EXPECT_EQ(3, inputs);
}

TEST_F(TunerTest, ChannelMapAnswersPerInputType)
{
    CardGraph card(kTunerCard);
    ASSERT_HRESULT_SUCCEEDED(card.find(&PIN_CATEGORY_CAPTURE, card.tuner));
    IAMTVTuner *tuner = card.tuner;
    ASSERT_HRESULT_SUCCEEDED(tuner->put_Mode(AMTUNER_MODE_TV));

    EXPECT_EQ(AMTUNER_SIGNALPRESENT, tunedStrength(tuner, 3, TunerInputAntenna));
    EXPECT_EQ(AMTUNER_NOSIGNAL, tunedStrength(tuner, 3, TunerInputCable));
    EXPECT_EQ(AMTUNER_NOSIGNAL, tunedStrength(tuner, 4, TunerInputAntenna));
    EXPECT_EQ(AMTUNER_SIGNALPRESENT, tunedStrength(tuner, 4, TunerInputCable));
    EXPECT_EQ(2, tunedStrength(tuner, 8, TunerInputAntenna));
    EXPECT_EQ(AMTUNER_NOSIGNAL, tunedStrength(tuner, 8, TunerInputCable));
    EXPECT_EQ(AMTUNER_NOSIGNAL, tunedStrength(tuner, 5, TunerInputAntenna));

    long minimum = 0;
    long maximum = 0;
    ASSERT_HRESULT_SUCCEEDED(tuner->ChannelMinMax(&minimum, &maximum));
    EXPECT_EQ(2, minimum);
    EXPECT_EQ(69, maximum);
    EXPECT_EQ(E_INVALIDARG, tuner->put_Channel(70, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT));

    long found = -1;
    ASSERT_HRESULT_SUCCEEDED(tuner->put_InputType(0, TunerInputAntenna));
    ASSERT_HRESULT_SUCCEEDED(tuner->AutoTune(6, &found));
    EXPECT_EQ(1, found);

    const std::vector<std::wstring> entries = lab::journal(kTunerCard);
    const std::vector<std::wstring> expectedStart = {
        L"Mode TV",           L"InputType 0 antenna", L"Channel 3 antenna TV", L"SignalPresent 1",
        L"InputType 0 cable", L"Channel 3 cable TV",  L"SignalPresent 0"};
    ASSERT_GE(entries.size(), expectedStart.size());
    EXPECT_EQ(expectedStart, std::vector<std::wstring>(entries.begin(), entries.begin() + expectedStart.size()));
    EXPECT_TRUE(lab::journalHas(kTunerCard, L"Channel 70 antenna TV failed 0x80070057"));
    EXPECT_TRUE(lab::journalHas(kTunerCard, L"AutoTune 6 found 1"));

    // A test's override of the channel map takes effect at once and goes with its scope.
    {
        lab::DeviceOverride quiet(kTunerCard, L"channels", L"");
        EXPECT_EQ(AMTUNER_NOSIGNAL, tunedStrength(tuner, 3, TunerInputAntenna));
    }
    EXPECT_EQ(AMTUNER_SIGNALPRESENT, strength(tuner));
}

TEST_F(TunerTest, FmStationsAnswerByFrequency)
{
    CardGraph card(kTunerCard);
    ASSERT_HRESULT_SUCCEEDED(card.find(&PIN_CATEGORY_CAPTURE, card.tuner));
    IAMTVTuner *tuner = card.tuner;
    ASSERT_HRESULT_SUCCEEDED(tuner->put_Mode(AMTUNER_MODE_FM_RADIO));
    const auto tuned = [&](long hertz) {
        EXPECT_HRESULT_SUCCEEDED(tuner->put_Channel(hertz, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT));
        return strength(tuner);
    };
    EXPECT_EQ(AMTUNER_SIGNALPRESENT, tuned(88100000));
    // A sweep in steps of 0.2 MHz carried in a double lands a hertz short.
    EXPECT_EQ(AMTUNER_SIGNALPRESENT, tuned(88099999));
    EXPECT_EQ(AMTUNER_NOSIGNAL, tuned(88300000));
    EXPECT_EQ(2, tuned(94500000));
    EXPECT_EQ(AMTUNER_SIGNALPRESENT, tuned(104900000));
    EXPECT_EQ(E_INVALIDARG, tuner->put_Channel(80000000, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT));

    long channel = 0;
    long video = 0;
    long audio = 0;
    ASSERT_HRESULT_SUCCEEDED(tuner->get_Channel(&channel, &video, &audio));
    EXPECT_EQ(104900000, channel);
    EXPECT_TRUE(lab::journalHas(kTunerCard, L"Mode FM"));
    EXPECT_TRUE(lab::journalHas(kTunerCard, L"Channel 88100000 cable FM"));
}

TEST_F(TunerTest, CrossbarRoutesAndJournalsThem)
{
    CardGraph card(kTunerCard);
    ASSERT_HRESULT_SUCCEEDED(card.find(&PIN_CATEGORY_CAPTURE, card.crossbar));
    IAMCrossbar *crossbar = card.crossbar;
    long outputs = 0;
    long inputs = 0;
    ASSERT_HRESULT_SUCCEEDED(crossbar->get_PinCounts(&outputs, &inputs));
    ASSERT_EQ(2, outputs);
    ASSERT_EQ(5, inputs);

    long related = 0;
    long type = 0;
    ASSERT_HRESULT_SUCCEEDED(crossbar->get_CrossbarPinInfo(TRUE, 1, &related, &type));
    EXPECT_EQ(PhysConn_Video_Tuner, type);
    EXPECT_EQ(4, related); // the tuner's sound
    ASSERT_HRESULT_SUCCEEDED(crossbar->get_CrossbarPinInfo(FALSE, 0, &related, &type));
    EXPECT_EQ(PhysConn_Video_VideoDecoder, type);
    EXPECT_EQ(1, related);

    long routed = -1;
    ASSERT_HRESULT_SUCCEEDED(crossbar->get_IsRoutedTo(0, &routed));
    EXPECT_EQ(0, routed); // composite, the first video input
    EXPECT_EQ(S_OK, crossbar->CanRoute(0, 1));
    EXPECT_EQ(S_FALSE, crossbar->CanRoute(0, 3)); // sound into the video decoder
    EXPECT_EQ(E_INVALIDARG, crossbar->CanRoute(2, 1));
    ASSERT_HRESULT_SUCCEEDED(crossbar->Route(0, 1));
    ASSERT_HRESULT_SUCCEEDED(crossbar->get_IsRoutedTo(0, &routed));
    EXPECT_EQ(1, routed);
    EXPECT_TRUE(lab::journalHas(kTunerCard, L"Route 0 1"));

    {
        lab::DeviceOverride refuse(kTunerCard, L"fault.canroute", L"1");
        EXPECT_EQ(S_FALSE, crossbar->CanRoute(0, 1));
        EXPECT_EQ(E_FAIL, crossbar->Route(0, 1));
    }
    {
        lab::DeviceOverride failing(kTunerCard, L"fault.route", L"0x80070005");
        EXPECT_EQ(S_OK, crossbar->CanRoute(0, 2));
        EXPECT_EQ(E_ACCESSDENIED, crossbar->Route(0, 2));
    }
    EXPECT_TRUE(lab::journalHas(kTunerCard, L"Route 0 1 failed 0x80004005"));
    EXPECT_TRUE(lab::journalHas(kTunerCard, L"Route 0 2 failed 0x80070005"));
}

TEST_F(TunerTest, CardStreamsBothPinsAndJournalsRunsAndFaults)
{
    {
        CardGraph card(kTunerCard);
        ASSERT_HRESULT_SUCCEEDED(card.renderToNull(MEDIATYPE_Video));
        ASSERT_HRESULT_SUCCEEDED(card.renderToNull(MEDIATYPE_Audio));
        CComQIPtr<IMediaControl> control = card.control();
        ASSERT_HRESULT_SUCCEEDED(control->Run());
        EXPECT_TRUE(labtest::waitForSamplesBeyond(kTunerCard, 0));
        ASSERT_HRESULT_SUCCEEDED(control->Stop());
        EXPECT_TRUE(lab::journalHas(kTunerCard, L"Run"));
        EXPECT_TRUE(lab::journalHas(kTunerCard, L"Stop"));
    }
    {
        lab::DeviceOverride inUse(kTunerCard, L"fault.run", L"0x800700AA");
        CardGraph card(kTunerCard);
        ASSERT_HRESULT_SUCCEEDED(card.renderToNull(MEDIATYPE_Video));
        CComQIPtr<IMediaControl> control = card.control();
        EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_BUSY), control->Run());
        control->Stop();
        EXPECT_TRUE(lab::journalHas(kTunerCard, L"Run failed 0x800700AA"));
    }
    {
        lab::DeviceOverride refuse(kTunerCard, L"fault.put_Mode", L"E_FAIL");
        CardGraph card(kTunerCard);
        ASSERT_HRESULT_SUCCEEDED(card.find(&PIN_CATEGORY_CAPTURE, card.tuner));
        EXPECT_EQ(E_FAIL, card.tuner->put_Mode(AMTUNER_MODE_TV));
        EXPECT_TRUE(lab::journalHas(kTunerCard, L"Mode TV failed 0x80004005"));
    }
}

// What the card's video shows, frame by frame: the lab picture (its frame number readable), snow
// (lumas all over the place) or black.
enum class Picture { Lab, Snow, Black, Other };

Picture pictureOf(const labtest::CollectedSample &sample)
{
    const lab::FrameView frame{
        sample.data.data(), static_cast<long>(sample.data.size()), lab::PixelLayout::Yuy2, 640, 480, false};
    if (!frame.complete())
        return Picture::Other;
    std::vector<bool> seen(256, false);
    int distinct = 0;
    for (int x = 0; x < frame.width; ++x) {
        const int luma = std::min(255, std::max(0, frame.luma(x, 240)));
        distinct += seen[luma] ? 0 : 1;
        seen[luma] = true;
    }
    // Snow may pass for a frame mark now and then, so it is told apart first.
    if (distinct > 100)
        return Picture::Snow;
    unsigned long number = 0;
    if (lab::readFrameNumber(frame, number))
        return Picture::Lab;
    return distinct == 1 && frame.luma(0, 240) == 0 ? Picture::Black : Picture::Other;
}

// Tunes and routes a fresh card, then captures a few frames of its picture.
std::vector<Picture> pictures(long channel, bool routeTuner)
{
    labtest::LabGraph graph;
    EXPECT_HRESULT_SUCCEEDED(graph.build(kTunerCard, nullptr, MEDIASUBTYPE_YUY2));
    CComQIPtr<IAMTVTuner> tuner(graph.source);
    CComQIPtr<IAMCrossbar> crossbar(graph.source);
    if (!tuner || !crossbar)
        return {};
    tuner->put_InputType(0, TunerInputAntenna);
    tuner->put_Channel(channel, AMTUNER_SUBCHAN_DEFAULT, AMTUNER_SUBCHAN_DEFAULT);
    if (routeTuner)
        crossbar->Route(0, 1);
    EXPECT_EQ(S_OK, graph.capture(3, 5000));
    std::vector<Picture> seen;
    for (const labtest::CollectedSample &sample : graph.samples())
        seen.push_back(pictureOf(sample));
    graph.tearDown();
    return seen;
}

TEST_F(TunerTest, PictureFollowsTuningAndRouting)
{
    const std::vector<Picture> received = pictures(3, true);
    ASSERT_GE(received.size(), 3u);
    EXPECT_EQ(std::vector<Picture>(received.size(), Picture::Lab), received);

    const std::vector<Picture> nothing = pictures(5, true);
    ASSERT_GE(nothing.size(), 3u);
    EXPECT_EQ(std::vector<Picture>(nothing.size(), Picture::Snow), nothing);

    const std::vector<Picture> composite = pictures(3, false);
    ASSERT_GE(composite.size(), 3u);
    EXPECT_EQ(std::vector<Picture>(composite.size(), Picture::Black), composite);
}

TEST_F(TunerTest, CardSurvivesRunPauseStopCyclesAndRemoval)
{
    CardGraph card(kTunerCard);
    ASSERT_HRESULT_SUCCEEDED(card.renderToNull(MEDIATYPE_Video));
    ASSERT_HRESULT_SUCCEEDED(card.renderToNull(MEDIATYPE_Audio));
    CComQIPtr<IMediaControl> control = card.control();
    for (int cycle = 0; cycle < 3; ++cycle) {
        ASSERT_HRESULT_SUCCEEDED(control->Run());
        EXPECT_TRUE(labtest::waitForSamplesBeyond(kTunerCard, lab::samplesDelivered(kTunerCard)));
        ASSERT_HRESULT_SUCCEEDED(control->Pause());
        ASSERT_HRESULT_SUCCEEDED(control->Run());
        EXPECT_TRUE(labtest::waitForSamplesBeyond(kTunerCard, lab::samplesDelivered(kTunerCard)));
        ASSERT_HRESULT_SUCCEEDED(control->Stop());
        EXPECT_EQ(0, lab::liveThreads()) << "cycle " << cycle;
    }
    // Wine's graph does not stop a filter it removes: the peers refuse to disconnect while
    // running, and the card goes on streaming until the graph stops.
    ASSERT_HRESULT_SUCCEEDED(control->Run());
    EXPECT_TRUE(labtest::waitForSamplesBeyond(kTunerCard, lab::samplesDelivered(kTunerCard)));
    CComPtr<IFilterGraph> graph;
    FILTER_INFO info = {};
    ASSERT_HRESULT_SUCCEEDED(card.filter->QueryFilterInfo(&info));
    graph.Attach(info.pGraph);
    EXPECT_EQ(VFW_E_NOT_STOPPED, graph->RemoveFilter(card.filter));
    EXPECT_TRUE(labtest::waitForSamplesBeyond(kTunerCard, lab::samplesDelivered(kTunerCard)));
    ASSERT_HRESULT_SUCCEEDED(control->Stop());
    EXPECT_HRESULT_SUCCEEDED(graph->RemoveFilter(card.filter));
    EXPECT_EQ(0, lab::liveThreads());
    EXPECT_EQ(L"Stop", lab::journal(kTunerCard).back());
}

} // namespace
