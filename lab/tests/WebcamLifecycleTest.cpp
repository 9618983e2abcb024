// A simulated webcam through the lives a real one has: Stop/Run/Stop cycles, removal from a
// running graph, the privacy shutter, and every lab object and thread gone afterwards.
#include <windows.h>
#include <dshow.h>

#include <gtest/gtest.h>

#include "common/MediaType.h"
#include "LabGraph.h"
#include "WaitFor.h"
#include "lab/FrameMark.h"
#include "lab/LabControl.h"

using labtest::LabGraph;

namespace {

// KSPROPERTY_CAMERACONTROL_PRIVACY
const long kPrivacy = 8;

void waitForSamples(const std::wstring &device, long long count)
{
    labtest::waitFor([&device, count] { return lab::samplesDelivered(device) >= count; });
}

} // namespace

TEST(LabWebcamLifecycle, SurvivesStopRunStopCyclesAndLeavesNoThreads)
{
    const wchar_t device[] = L"Lab Webcam RGB24";
    const long objectsBefore = lab::liveObjects();
    {
        LabGraph graph;
        ASSERT_EQ(S_OK, graph.build(device, nullptr, MEDIASUBTYPE_RGB24));
        for (int cycle = 0; cycle < 3; ++cycle) {
            lab::clearJournal(device);
            ASSERT_TRUE(SUCCEEDED(graph.run()));
            waitForSamples(device, 2);
            EXPECT_GE(lab::liveThreads(), 1);
            EXPECT_EQ(S_OK, graph.stop());
            EXPECT_EQ(0, lab::liveThreads()) << "cycle " << cycle;
            EXPECT_GE(lab::samplesDelivered(device), 2) << "cycle " << cycle;
            const std::vector<std::wstring> journal = lab::journal(device);
            ASSERT_FALSE(journal.empty());
            EXPECT_EQ(L"Stop", journal.back());
        }
    }
    EXPECT_EQ(objectsBefore, lab::liveObjects());
}

TEST(LabWebcamLifecycle, SurvivesRemovalFromARunningGraph)
{
    const wchar_t device[] = L"Lab Webcam YUY2";
    const long objectsBefore = lab::liveObjects();
    {
        LabGraph graph;
        ASSERT_EQ(S_OK, graph.build(device, nullptr, MEDIASUBTYPE_YUY2));
        lab::clearJournal(device);
        ASSERT_TRUE(SUCCEEDED(graph.run()));
        waitForSamples(device, 2);
        // Like a driver's pins, connected pins refuse to disconnect while running: the graph
        // keeps the filter, which goes on delivering.
        EXPECT_EQ(VFW_E_NOT_STOPPED, graph.graph->RemoveFilter(graph.source));
        const long long delivered = lab::samplesDelivered(device);
        waitForSamples(device, delivered + 2);
        EXPECT_GE(lab::samplesDelivered(device), delivered + 2);
        EXPECT_EQ(S_OK, graph.stop());
        EXPECT_EQ(S_OK, graph.graph->RemoveFilter(graph.source));
        graph.source.Release();
        EXPECT_EQ(0, lab::liveThreads());
    }
    EXPECT_EQ(objectsBefore, lab::liveObjects());
}

TEST(LabWebcamLifecycle, PrivacyShutterKeepsValueAndFlags)
{
    LabGraph graph;
    ASSERT_EQ(S_OK, graph.addDevice(L"Lab Webcam RGB24"));
    CComPtr<IAMCameraControl> control;
    ASSERT_EQ(S_OK, graph.builder->FindInterface(nullptr, nullptr, graph.source, IID_PPV_ARGS(&control)));
    long value = -1;
    long flags = -1;
    ASSERT_EQ(S_OK, control->Get(kPrivacy, &value, &flags));
    EXPECT_EQ(0, value);
    lab::clearJournal(L"Lab Webcam RGB24");
    ASSERT_EQ(S_OK, control->Set(kPrivacy, 1, CameraControl_Flags_Manual));
    ASSERT_EQ(S_OK, control->Get(kPrivacy, &value, &flags));
    EXPECT_EQ(1, value);
    EXPECT_EQ(CameraControl_Flags_Manual, flags);
    EXPECT_EQ(std::vector<std::wstring>{L"Privacy 1 2"}, lab::journal(L"Lab Webcam RGB24"));
    EXPECT_EQ(E_INVALIDARG, control->Set(kPrivacy, 5, CameraControl_Flags_Manual));
    EXPECT_EQ(E_PROP_ID_UNSUPPORTED, control->Get(CameraControl_Zoom, &value, &flags));

    CComPtr<IBaseFilter> closed;
    ASSERT_EQ(S_OK, labtest::bindDevice(L"Lab Webcam MJPG", closed));
    CComQIPtr<IAMCameraControl> startsClosed(closed.p);
    ASSERT_TRUE(startsClosed);
    ASSERT_EQ(S_OK, startsClosed->Get(kPrivacy, &value, &flags));
    EXPECT_EQ(1, value);

    CComPtr<IBaseFilter> unsupported;
    ASSERT_EQ(S_OK, labtest::bindDevice(L"Lab Webcam YUY2", unsupported));
    CComQIPtr<IAMCameraControl> withoutPrivacy(unsupported.p);
    ASSERT_TRUE(withoutPrivacy);
    EXPECT_EQ(E_PROP_ID_UNSUPPORTED, withoutPrivacy->Get(kPrivacy, &value, &flags));

    CComPtr<IBaseFilter> plain;
    ASSERT_EQ(S_OK, labtest::bindDevice(L"Lab Webcam UYVY", plain));
    CComQIPtr<IAMCameraControl> none(plain.p);
    EXPECT_FALSE(none);
}

TEST(LabWebcamLifecycle, CaptureGraphBuilderFindsTheStreamConfigOfTheCapturePin)
{
    LabGraph graph;
    ASSERT_EQ(S_OK, graph.addDevice(L"Lab Webcam YUY2 MJPG"));
    CComPtr<IAMStreamConfig> config;
    ASSERT_EQ(S_OK, graph.builder->FindInterface(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, graph.source,
                                                 IID_PPV_ARGS(&config)));
    int count = 0;
    int size = 0;
    ASSERT_EQ(S_OK, config->GetNumberOfCapabilities(&count, &size));
    EXPECT_EQ(3, count);
    // Connected, a new format reconnects the pin with it.
    AM_MEDIA_TYPE *small = nullptr;
    VIDEO_STREAM_CONFIG_CAPS caps = {};
    ASSERT_EQ(S_OK, config->GetStreamCaps(1, &small, reinterpret_cast<BYTE *>(&caps)));
    ASSERT_TRUE(SUCCEEDED(
        graph.builder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, graph.source, nullptr, nullptr)));
    EXPECT_EQ(S_OK, config->SetFormat(small));
    CComPtr<IPin> out;
    out.Attach(labtest::firstPin(graph.source, PINDIR_OUTPUT));
    lab::MediaType::deleteType(small);
    AM_MEDIA_TYPE received = {};
    ASSERT_EQ(S_OK, out->ConnectionMediaType(&received));
    const lab::MediaType connected(received);
    lab::MediaType::freeContents(received);
    EXPECT_TRUE(IsEqualGUID(MEDIASUBTYPE_YUY2, connected->subtype));
    EXPECT_EQ(320, connected.videoInfo()->bmiHeader.biWidth);

    CComPtr<IAMStreamConfig> preview;
    EXPECT_EQ(E_NOINTERFACE, graph.builder->FindInterface(&PIN_CATEGORY_PREVIEW, &MEDIATYPE_Video, graph.source,
                                                          IID_PPV_ARGS(&preview)));
}
