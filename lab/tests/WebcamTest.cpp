// The simulated webcams as the library meets them: listed by the system device enumerator,
// bound through their monikers, delivering numbered frames into Wine's sample grabber.
#include <windows.h>
#include <dshow.h>

#include <gtest/gtest.h>

#include "common/MediaType.h"
#include "LabGraph.h"
#include "WaitFor.h"
#include "lab/FrameMark.h"
#include "lab/LabClassIds.h"
#include "lab/LabControl.h"

using labtest::LabGraph;

namespace {

lab::PixelLayout layoutOf(const GUID &subType)
{
    if (IsEqualGUID(subType, MEDIASUBTYPE_YUY2))
        return lab::PixelLayout::Yuy2;
    if (IsEqualGUID(subType, MEDIASUBTYPE_UYVY))
        return lab::PixelLayout::Uyvy;
    if (IsEqualGUID(subType, MEDIASUBTYPE_RGB32))
        return lab::PixelLayout::Rgb32;
    return lab::PixelLayout::Rgb24;
}

// The frame numbers of the samples, checking each carries a complete, readable picture.
std::vector<unsigned long> frameNumbers(const std::vector<labtest::CollectedSample> &samples, const AM_MEDIA_TYPE &type)
{
    const BITMAPINFOHEADER &header = reinterpret_cast<const VIDEOINFOHEADER *>(type.pbFormat)->bmiHeader;
    std::vector<unsigned long> numbers;
    for (const labtest::CollectedSample &sample : samples) {
        const lab::FrameView view{sample.data.data(),
                                  static_cast<long>(sample.data.size()),
                                  layoutOf(type.subtype),
                                  static_cast<int>(header.biWidth),
                                  static_cast<int>(std::labs(header.biHeight)),
                                  header.biHeight > 0};
        unsigned long number = 0;
        EXPECT_TRUE(lab::readFrameNumber(view, number)) << "unreadable frame of " << sample.data.size() << " bytes";
        numbers.push_back(number);
    }
    return numbers;
}

void expectConsecutive(const std::vector<unsigned long> &numbers)
{
    for (size_t i = 1; i < numbers.size(); ++i)
        EXPECT_EQ(numbers[i - 1] + 1, numbers[i]) << "frame " << i;
}

} // namespace

TEST(LabWebcam, DeviceEnumeratorListsEveryWebcamWithItsPropertyBag)
{
    const std::vector<labtest::MonikerInfo> devices = labtest::listDevices(CLSID_VideoInputDeviceCategory);
    std::map<std::wstring, std::map<std::wstring, std::wstring>> byName;
    for (const labtest::MonikerInfo &device : devices)
        byName[device.values.at(L"FriendlyName")] = device.values;

    for (const wchar_t *name :
         {L"Lab Webcam RGB24", L"Lab Webcam RGB24 Top-Down", L"Lab Webcam YUY2", L"Lab Webcam UYVY", L"Lab Webcam MJPG",
          L"Lab Webcam YUY2 MJPG", L"Lab Webcam HD", L"Lab Webcam In Use"}) {
        ASSERT_EQ(1u, byName.count(name)) << "missing " << std::string(name, name + wcslen(name));
        EXPECT_EQ(L"{F19DD49F-12B0-4D4B-8CF0-09AECC2CDF40}", byName[name][L"CLSID"]);
        EXPECT_FALSE(byName[name][L"Description"].empty());
    }
    EXPECT_EQ(L"\\\\?\\usb#vid_045e&pid_0772&mi_00#7&2b3c&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global",
              byName[L"Lab Webcam YUY2"][L"DevicePath"]);
    EXPECT_EQ(L"Lab USB camera, motion JPEG, privacy shutter", byName[L"Lab Webcam MJPG"][L"Description"]);
}

TEST(LabWebcam, UncompressedCapabilitiesDeliverNumberedFramesInOrder)
{
    const long objectsBefore = lab::liveObjects();
    for (const wchar_t *device :
         {L"Lab Webcam RGB24", L"Lab Webcam RGB24 Top-Down", L"Lab Webcam YUY2", L"Lab Webcam UYVY"}) {
        SCOPED_TRACE(std::string(device, device + wcslen(device)));
        CComPtr<IBaseFilter> probe;
        ASSERT_EQ(S_OK, labtest::bindDevice(device, probe));
        CComPtr<IAMStreamConfig> config;
        CComPtr<IPin> out;
        out.Attach(labtest::firstPin(probe, PINDIR_OUTPUT));
        ASSERT_EQ(S_OK, out->QueryInterface(IID_PPV_ARGS(&config)));
        int count = 0;
        int size = 0;
        ASSERT_EQ(S_OK, config->GetNumberOfCapabilities(&count, &size));
        EXPECT_EQ(static_cast<int>(sizeof(VIDEO_STREAM_CONFIG_CAPS)), size);
        for (int i = 0; i < count; ++i) {
            AM_MEDIA_TYPE *received = nullptr;
            VIDEO_STREAM_CONFIG_CAPS caps = {};
            ASSERT_EQ(S_OK, config->GetStreamCaps(i, &received, reinterpret_cast<BYTE *>(&caps)));
            const lab::MediaType capability(*received);
            lab::MediaType::deleteType(received);
            EXPECT_EQ(capability.videoInfo()->bmiHeader.biWidth, caps.MaxOutputSize.cx);

            lab::clearJournal(device);
            LabGraph graph;
            ASSERT_EQ(S_OK, graph.build(device, &capability.get(), GUID_NULL));
            ASSERT_EQ(S_OK, graph.capture(4, 5000));
            const std::vector<labtest::CollectedSample> samples = graph.samples();
            const std::vector<unsigned long> numbers = frameNumbers(samples, capability.get());
            ASSERT_GE(numbers.size(), 4u);
            EXPECT_EQ(0ul, numbers.front());
            expectConsecutive(numbers);
            for (size_t s = 1; s < samples.size(); ++s)
                EXPECT_GT(samples[s].start, samples[s - 1].start);
            const std::vector<std::wstring> journal = lab::journal(device);
            ASSERT_GE(journal.size(), 4u);
            EXPECT_EQ(L"Pause", journal[0]);
            EXPECT_EQ(L"Run", journal[1]);
            graph.tearDown();
        }
    }
    EXPECT_EQ(objectsBefore, lab::liveObjects());
    EXPECT_EQ(0, lab::liveThreads());
}

// Frames of a graph whose grabber asked for RGB24, so the builder had to place a decoder.
static void expectDecodedFrames(const wchar_t *device, int width, int height, int tolerance)
{
    SCOPED_TRACE(std::string(device, device + wcslen(device)));
    LabGraph graph;
    ASSERT_EQ(S_OK, graph.build(device, nullptr, MEDIASUBTYPE_RGB24));
    ASSERT_EQ(S_OK, graph.capture(4, 5000));
    AM_MEDIA_TYPE received = {};
    ASSERT_EQ(S_OK, graph.connectedType(received));
    const lab::MediaType connected(received);
    lab::MediaType::freeContents(received);
    EXPECT_TRUE(IsEqualGUID(MEDIASUBTYPE_RGB24, connected->subtype));
    const BITMAPINFOHEADER header = connected.videoInfo()->bmiHeader;
    const std::vector<labtest::CollectedSample> samples = graph.samples();
    const std::vector<unsigned long> numbers = frameNumbers(samples, connected.get());
    ASSERT_EQ(width, header.biWidth);
    ASSERT_EQ(height, std::labs(header.biHeight));
    ASSERT_GE(numbers.size(), 4u);
    expectConsecutive(numbers);
    const lab::FrameView first{
        samples[0].data.data(), static_cast<long>(samples[0].data.size()), lab::PixelLayout::Rgb24, width, height,
        header.biHeight > 0};
    for (int bar = 0; bar < 8; ++bar) {
        const int x = (2 * bar + 1) * width / 16;
        const lab::Rgb expected = lab::barColour(x, width);
        const lab::Rgb actual = first.rgb(x, height / 2);
        EXPECT_NEAR(expected.r, actual.r, tolerance) << "bar " << bar;
        EXPECT_NEAR(expected.g, actual.g, tolerance) << "bar " << bar;
        EXPECT_NEAR(expected.b, actual.b, tolerance) << "bar " << bar;
    }
}

TEST(LabWebcam, MotionJpegReachesAnRgb24GrabberThroughTheDecompressor)
{
    const long objectsBefore = lab::liveObjects();
    expectDecodedFrames(L"Lab Webcam MJPG", 640, 480, 24);
    EXPECT_EQ(objectsBefore, lab::liveObjects());
}

TEST(LabWebcam, YuvReachesAnRgb24GrabberThroughTheColourConverter)
{
    const long objectsBefore = lab::liveObjects();
    expectDecodedFrames(L"Lab Webcam YUY2", 640, 480, 6);
    expectDecodedFrames(L"Lab Webcam UYVY", 640, 480, 6);
    EXPECT_EQ(objectsBefore, lab::liveObjects());
}

TEST(LabWebcam, EveryFormatPreviewsThroughTheDefaultVideoRenderer)
{
    const long objectsBefore = lab::liveObjects();
    for (const wchar_t *device : {L"Lab Webcam RGB24", L"Lab Webcam RGB24 Top-Down", L"Lab Webcam YUY2",
                                  L"Lab Webcam UYVY", L"Lab Webcam MJPG"}) {
        SCOPED_TRACE(std::string(device, device + wcslen(device)));
        lab::clearJournal(device);
        LabGraph graph;
        ASSERT_EQ(S_OK, graph.addDevice(device));
        ASSERT_TRUE(SUCCEEDED(
            graph.builder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, graph.source, nullptr, nullptr)));
        ASSERT_TRUE(SUCCEEDED(graph.run()));
        labtest::waitFor([device] { return lab::samplesDelivered(device) >= 3; });
        EXPECT_EQ(S_OK, graph.stop());
        EXPECT_GE(lab::samplesDelivered(device), 3);
    }
    EXPECT_EQ(objectsBefore, lab::liveObjects());
}
