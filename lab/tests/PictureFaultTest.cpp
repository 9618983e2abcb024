// The picture a person looks at: a camera's frames carry their number in digits and a moving
// block below the bars, and the picture faults deliver a frozen or a one-colour picture.
#include <windows.h>
#include <dshow.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "LabGraph.h"
#include "WaitFor.h"
#include "lab/FrameMark.h"
#include "lab/LabControl.h"

using labtest::LabGraph;

namespace {

const wchar_t kDevice[] = L"Lab Webcam YUY2";
const int kWidth = 640;
const int kHeight = 480;

std::vector<labtest::CollectedSample> capture(long long frames)
{
    lab::clearJournal(kDevice);
    LabGraph graph;
    EXPECT_EQ(S_OK, graph.build(kDevice, nullptr, MEDIASUBTYPE_YUY2));
    EXPECT_TRUE(SUCCEEDED(graph.run()));
    EXPECT_TRUE(labtest::waitForSamplesBeyond(kDevice, frames));
    graph.stop();
    return graph.samples();
}

lab::FrameView view(const labtest::CollectedSample &sample)
{
    return lab::FrameView{
        sample.data.data(), static_cast<long>(sample.data.size()), lab::PixelLayout::Yuy2, kWidth, kHeight, false};
}

// Rows [first, last) of two YUY2 frames hold the same bytes.
bool sameRows(const labtest::CollectedSample &a, const labtest::CollectedSample &b, int first, int last)
{
    const size_t stride = kWidth * 2;
    return std::equal(a.data.begin() + first * stride, a.data.begin() + last * stride, b.data.begin() + first * stride);
}

} // namespace

TEST(LabPicture, FramesShowTheirNumberAndAMovingBlockBelowTheBars)
{
    const std::vector<labtest::CollectedSample> samples = capture(3);
    ASSERT_GE(samples.size(), 3u);
    const int strip = kHeight - kHeight / 4;
    for (size_t i = 1; i < samples.size(); ++i) {
        unsigned long earlier = 0, later = 0;
        ASSERT_TRUE(lab::readFrameNumber(view(samples[i - 1]), earlier));
        ASSERT_TRUE(lab::readFrameNumber(view(samples[i]), later));
        EXPECT_EQ(earlier + 1, later);
        // The bars stand still; the strip for people changes with every frame.
        EXPECT_TRUE(sameRows(samples[i - 1], samples[i], lab::kMarkCell, strip));
        EXPECT_FALSE(sameRows(samples[i - 1], samples[i], strip, kHeight));
    }
    // The strip is black around its white digits and block.
    const lab::FrameView first = view(samples[0]);
    EXPECT_LT(first.luma(kWidth - 2, strip + 2), 16);
    int white = 0;
    for (int x = 0; x < kWidth; x += 4)
        white += first.luma(x, strip + (kHeight - strip) / 2) > 200 ? 1 : 0;
    EXPECT_GT(white, 0);
}

TEST(LabPicture, AFrozenCameraRepeatsTheFirstPicture)
{
    lab::DeviceOverride frozen(kDevice, L"fault.frozen", L"yes");
    const std::vector<labtest::CollectedSample> samples = capture(3);
    ASSERT_GE(samples.size(), 3u);
    for (const labtest::CollectedSample &sample : samples) {
        unsigned long number = 99;
        EXPECT_TRUE(lab::readFrameNumber(view(sample), number));
        EXPECT_EQ(0u, number);
        EXPECT_EQ(samples[0].data, sample.data);
    }
    // Only the picture stands still: the samples keep their times.
    EXPECT_LT(samples[0].start, samples[1].start);
}

TEST(LabPicture, AFlatCameraDeliversOneColour)
{
    lab::DeviceOverride flat(kDevice, L"fault.flat", L"yes");
    const std::vector<labtest::CollectedSample> samples = capture(2);
    ASSERT_GE(samples.size(), 2u);
    for (const labtest::CollectedSample &sample : samples) {
        ASSERT_EQ(static_cast<size_t>(kWidth * kHeight * 2), sample.data.size());
        unsigned long number = 0;
        EXPECT_FALSE(lab::readFrameNumber(view(sample), number));
        // Every Y0 U Y1 V quadruple the same.
        bool even = true;
        for (size_t i = 4; i < sample.data.size() && even; ++i)
            even = sample.data[i] == sample.data[i % 4];
        EXPECT_TRUE(even);
        EXPECT_GT(sample.data[0], 16) << "not black";
    }
}
