// The host's picture judge on synthetic frames: each kind of bad picture is named, a real
// picture passes, and the measures say why.
#include "PictureHealth.h"

#include <gtest/gtest.h>

#include <cstdint>

using sorvane::diag::Image;
using sorvane::diag::PictureHealth;

namespace {

Image filled(int width, int height, unsigned char b, unsigned char g, unsigned char r)
{
    Image image(width, height);
    for (size_t i = 0; i < image.bgr.size(); i += 3) {
        image.bgr[i] = b;
        image.bgr[i + 1] = g;
        image.bgr[i + 2] = r;
    }
    return image;
}

// Vertical bars of grey levels with a bright square at `offset`: structure that moves.
Image scene(int offset)
{
    Image image(160, 120);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            unsigned char level = static_cast<unsigned char>((x / 20) * 30);
            if (x >= offset && x < offset + 16 && y >= 40 && y < 56)
                level = 255;
            unsigned char *pixel = image.row(y) + x * 3;
            pixel[0] = pixel[1] = pixel[2] = level;
        }
    }
    return image;
}

Image noise(uint32_t seed)
{
    Image image(160, 120);
    for (unsigned char &value : image.bgr) {
        seed = seed * 1664525u + 1013904223u;
        value = static_cast<unsigned char>(seed >> 24);
    }
    return image;
}

PictureHealth::Verdict verdictOf(const std::vector<Image> &frames)
{
    return PictureHealth::judge(PictureHealth::measure(frames));
}

} // namespace

TEST(PictureHealthTest, AMovingPictureIsGood)
{
    const std::vector<Image> frames = {scene(0), scene(8), scene(16)};
    const PictureHealth::Measures measures = PictureHealth::measure(frames);
    EXPECT_EQ(PictureHealth::GOOD, PictureHealth::judge(measures));
    EXPECT_EQ(3u, measures.frames);
    EXPECT_EQ(0u, measures.identicalPairs);
    EXPECT_GT(measures.structure, 0.8);
    EXPECT_GT(measures.change, 0.0);
    EXPECT_GT(measures.spread, 20.0);
    EXPECT_NE(std::wstring::npos, PictureHealth::sentence(PictureHealth::GOOD, measures).find(L"Picture: good"));
}

TEST(PictureHealthTest, BlackAndOneColourPicturesAreNamed)
{
    EXPECT_EQ(PictureHealth::BLACK, verdictOf({filled(64, 48, 0, 0, 0), filled(64, 48, 0, 0, 0)}));
    // A card without input still shows a little dark noise.
    Image nearlyBlack = filled(64, 48, 8, 8, 8);
    nearlyBlack.bgr[300] = 12;
    EXPECT_EQ(PictureHealth::BLACK, verdictOf({nearlyBlack}));
    EXPECT_EQ(PictureHealth::FLAT, verdictOf({filled(64, 48, 200, 40, 40), filled(64, 48, 200, 40, 40)}));
    EXPECT_EQ(PictureHealth::FLAT, verdictOf({filled(64, 48, 128, 128, 128)}));
    // Two colours side by side are no longer flat, and the spread measures it.
    Image halves = filled(64, 48, 128, 128, 128);
    for (int y = 0; y < halves.height; ++y)
        std::fill(halves.row(y), halves.row(y) + 32 * 3, 0);
    const PictureHealth::Measures measures = PictureHealth::measure({halves});
    EXPECT_NEAR(64.0, measures.spread, 1.0);
    EXPECT_EQ(PictureHealth::GOOD, PictureHealth::judge(measures));
}

TEST(PictureHealthTest, NoiseHasNoStructure)
{
    const PictureHealth::Measures measures = PictureHealth::measure({noise(1), noise(2), noise(3)});
    EXPECT_EQ(PictureHealth::NOISE, PictureHealth::judge(measures));
    EXPECT_LT(measures.structure, 0.1);
    EXPECT_GT(measures.change, 50.0);
}

TEST(PictureHealthTest, RepeatedFramesAreFrozenButOneFrameIsNot)
{
    const PictureHealth::Measures frozen = PictureHealth::measure({scene(4), scene(4), scene(4)});
    EXPECT_EQ(PictureHealth::FROZEN, PictureHealth::judge(frozen));
    EXPECT_EQ(2u, frozen.identicalPairs);
    EXPECT_EQ(0.0, frozen.change);
    EXPECT_EQ(PictureHealth::GOOD, verdictOf({scene(4)}));
    // One repeat among moving frames is a dropped beat, not a stopped camera.
    EXPECT_EQ(PictureHealth::GOOD, verdictOf({scene(4), scene(4), scene(12)}));
    // A frozen black picture is first of all black.
    EXPECT_EQ(PictureHealth::BLACK, verdictOf({filled(64, 48, 0, 0, 0), filled(64, 48, 0, 0, 0)}));
}

TEST(PictureHealthTest, NothingToJudgeIsSaid)
{
    const PictureHealth::Measures none = PictureHealth::measure(std::vector<Image>());
    EXPECT_EQ(PictureHealth::NO_FRAMES, PictureHealth::judge(none));
    EXPECT_STREQ(L"no frames", PictureHealth::name(PictureHealth::NO_FRAMES));
}
