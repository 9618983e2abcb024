// Every fault a simulated webcam can be given, as the library sees it, and the override scope
// that sets it for one test only.
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

const wchar_t kDevice[] = L"Lab Webcam YUY2";

CComPtr<IAMStreamConfig> streamConfig(IBaseFilter *filter)
{
    CComPtr<IPin> out;
    out.Attach(labtest::firstPin(filter, PINDIR_OUTPUT));
    CComQIPtr<IAMStreamConfig> config(out.p);
    return CComPtr<IAMStreamConfig>(config.p);
}

// A healthy camera with the device's frame rate, the measure of how long a run lasts.
const wchar_t kReference[] = L"Lab Webcam UYVY";

// Runs the device into a grabber beside the reference camera, stops both once the reference
// has delivered `frames` samples and returns what the device delivered in that time.
std::vector<labtest::CollectedSample> runForReferenceFrames(const std::wstring &device, long long frames)
{
    LabGraph reference;
    EXPECT_EQ(S_OK, reference.build(kReference, nullptr, MEDIASUBTYPE_UYVY));
    LabGraph graph;
    EXPECT_EQ(S_OK, graph.build(device, nullptr, MEDIASUBTYPE_YUY2));
    const long long before = lab::samplesDelivered(kReference);
    EXPECT_TRUE(SUCCEEDED(graph.run()));
    EXPECT_TRUE(SUCCEEDED(reference.run()));
    EXPECT_TRUE(labtest::waitFor([before, frames] { return lab::samplesDelivered(kReference) >= before + frames; }));
    graph.stop();
    reference.stop();
    return graph.samples();
}

} // namespace

TEST(LabWebcamFault, RunFailsWithTheConfiguredHresult)
{
    const long objectsBefore = lab::liveObjects();
    for (const HRESULT code : {static_cast<HRESULT>(0x800705AA), static_cast<HRESULT>(0x800700AA), E_INVALIDARG,
                               static_cast<HRESULT>(0x8007001F), E_FAIL}) {
        wchar_t text[16] = {};
        swprintf(text, 16, L"0x%08lX", static_cast<unsigned long>(code));
        SCOPED_TRACE(std::string(text, text + wcslen(text)));
        lab::DeviceOverride fault(kDevice, L"fault.run", text);
        lab::clearJournal(kDevice);
        LabGraph graph;
        ASSERT_EQ(S_OK, graph.build(kDevice, nullptr, MEDIASUBTYPE_YUY2));
        EXPECT_EQ(code, graph.run());
        EXPECT_TRUE(lab::journalHas(kDevice, std::wstring(L"Run failed ") + text));
        EXPECT_EQ(0, lab::samplesDelivered(kDevice));
    }
    EXPECT_EQ(-1, LabGetOverride(kDevice, L"fault.run", nullptr, 0));
    EXPECT_EQ(objectsBefore, lab::liveObjects());

    // The description's device held by another program fails without any override.
    LabGraph inUse;
    ASSERT_EQ(S_OK, inUse.build(L"Lab Webcam In Use", nullptr, MEDIASUBTYPE_YUY2));
    EXPECT_EQ(static_cast<HRESULT>(0x800705AA), inUse.run());
}

TEST(LabWebcamFault, StreamConfigFaults)
{
    CComPtr<IBaseFilter> filter;
    lab::DeviceOverride faults(kDevice);
    faults.set(L"fault.setformat", L"1").set(L"fault.getstreamcaps", L"0").set(L"fault.capssize", L"100");
    lab::clearJournal(kDevice);
    ASSERT_EQ(S_OK, labtest::bindDevice(kDevice, filter));
    CComPtr<IAMStreamConfig> config = streamConfig(filter);
    ASSERT_TRUE(config);

    int count = 0;
    int size = 0;
    ASSERT_EQ(S_OK, config->GetNumberOfCapabilities(&count, &size));
    EXPECT_EQ(2, count);
    EXPECT_EQ(100, size);

    VIDEO_STREAM_CONFIG_CAPS caps = {};
    AM_MEDIA_TYPE *first = nullptr;
    EXPECT_EQ(E_FAIL, config->GetStreamCaps(0, &first, reinterpret_cast<BYTE *>(&caps)));
    EXPECT_EQ(nullptr, first);
    AM_MEDIA_TYPE *second = nullptr;
    ASSERT_EQ(S_OK, config->GetStreamCaps(1, &second, reinterpret_cast<BYTE *>(&caps)));
    EXPECT_EQ(E_FAIL, config->SetFormat(second));
    EXPECT_TRUE(lab::journalHas(kDevice, L"SetFormat refused YUY2 320x240 30fps"));
    lab::MediaType::deleteType(second);

    AM_MEDIA_TYPE *current = nullptr;
    ASSERT_EQ(S_OK, config->GetFormat(&current));
    EXPECT_EQ(S_OK, config->SetFormat(current));
    EXPECT_TRUE(lab::journalHas(kDevice, L"SetFormat YUY2 640x480 30fps"));
    lab::MediaType::deleteType(current);
}

TEST(LabWebcamFault, DeliveryFaults)
{
    {
        lab::DeviceOverride silent(kDevice, L"fault.nosamples", L"yes");
        lab::clearJournal(kDevice);
        EXPECT_TRUE(runForReferenceFrames(kDevice, 9).empty());
        EXPECT_TRUE(lab::journalHas(kDevice, L"Delivered 0"));
    }
    {
        lab::DeviceOverride stopping(kDevice, L"fault.stopafter", L"3");
        EXPECT_EQ(3u, runForReferenceFrames(kDevice, 12).size());
    }
    {
        // A hung driver: Stop returns only after its delay, and the journal says when.
        lab::DeviceOverride hung(kDevice, L"fault.stopdelay", L"400");
        LabGraph graph;
        ASSERT_EQ(S_OK, graph.build(kDevice, nullptr, MEDIASUBTYPE_YUY2));
        EXPECT_TRUE(SUCCEEDED(graph.run()));
        lab::clearJournal(kDevice);
        const ULONGLONG before = GetTickCount64();
        graph.stop();
        EXPECT_GE(GetTickCount64() - before, 350u);
        EXPECT_TRUE(lab::journalHas(kDevice, L"Stop"));
    }
    {
        lab::DeviceOverride empty(kDevice, L"fault.zerolength", L"yes");
        const std::vector<labtest::CollectedSample> samples = runForReferenceFrames(kDevice, 9);
        ASSERT_FALSE(samples.empty());
        for (const labtest::CollectedSample &sample : samples)
            EXPECT_TRUE(sample.data.empty());
    }
    {
        lab::DeviceOverride noise(kDevice, L"fault.garbage", L"yes");
        const std::vector<labtest::CollectedSample> samples = runForReferenceFrames(kDevice, 9);
        ASSERT_FALSE(samples.empty());
        for (const labtest::CollectedSample &sample : samples) {
            const lab::FrameView view{
                sample.data.data(), static_cast<long>(sample.data.size()), lab::PixelLayout::Yuy2, 640, 480, false};
            unsigned long number = 0;
            EXPECT_EQ(640 * 480 * 2u, sample.data.size());
            EXPECT_FALSE(lab::readFrameNumber(view, number));
        }
    }
    EXPECT_GE(runForReferenceFrames(kDevice, 9).size(), 3u);
}

TEST(LabWebcamFault, GarbageFromAMotionJpegCameraNeverLeavesTheDecompressor)
{
    lab::DeviceOverride noise(L"Lab Webcam MJPG", L"fault.garbage", L"yes");
    lab::clearJournal(L"Lab Webcam MJPG");
    LabGraph graph;
    ASSERT_EQ(S_OK, graph.build(L"Lab Webcam MJPG", nullptr, MEDIASUBTYPE_RGB24));
    ASSERT_TRUE(SUCCEEDED(graph.run()));
    EXPECT_TRUE(labtest::waitForSamplesBeyond(L"Lab Webcam MJPG", 3));
    graph.stop();
    EXPECT_TRUE(graph.samples().empty());
}

TEST(LabWebcamFault, BindFailsWithTheConfiguredHresult)
{
    CComPtr<IBaseFilter> filter;
    {
        lab::DeviceOverride refuse(kDevice, L"fault.bind", L"0x80070005");
        lab::clearJournal(kDevice);
        EXPECT_EQ(static_cast<HRESULT>(0x80070005), labtest::bindDevice(kDevice, filter));
        EXPECT_EQ(nullptr, filter.p);
        EXPECT_TRUE(lab::journalHas(kDevice, L"Bind failed 0x80070005"));
    }
    EXPECT_EQ(S_OK, labtest::bindDevice(kDevice, filter));
}

TEST(LabWebcamFault, OverrideScopesRestoreWhatWasThere)
{
    LabSetOverride(kDevice, L"fault.stopafter", L"7");
    {
        lab::DeviceOverride scope(kDevice, L"fault.stopafter", L"2");
        wchar_t value[8] = {};
        ASSERT_EQ(1, LabGetOverride(kDevice, L"fault.stopafter", value, 8));
        EXPECT_STREQ(L"2", value);
    }
    wchar_t value[8] = {};
    ASSERT_EQ(1, LabGetOverride(kDevice, L"fault.stopafter", value, 8));
    EXPECT_STREQ(L"7", value);
    LabSetOverride(kDevice, L"fault.stopafter", nullptr);
    EXPECT_EQ(-1, LabGetOverride(kDevice, L"fault.stopafter", nullptr, 0));
}
