// Judges whether decoded frames make a usable picture: black, flat (one colour), noise (no
// spatial structure), frozen (consecutive frames identical), or good, with the measures that
// led there. Works on any top-down BGR frames, whatever device they came from.
#pragma once

#include "Image.h"

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class PictureHealth {
public:
    enum Verdict { GOOD, BLACK, FLAT, NOISE, FROZEN, NO_FRAMES };

    struct Measures {
        Measures() : frames(0), meanLuma(0), spread(0), structure(0), change(0), identicalPairs(0) {}

        size_t frames;
        // Mean luma 0..255 over every frame.
        double meanLuma;
        // The largest standard deviation of one colour channel within a frame, averaged over
        // frames: near 0 when the frame is one colour.
        double spread;
        // 1 - (difference between neighbouring pixels / difference between unrelated pixels),
        // averaged over frames: near 1 for a picture, near 0 for noise.
        double structure;
        // Mean absolute luma difference between consecutive frames, 0..255.
        double change;
        // Consecutive pairs with identical pixels.
        size_t identicalPairs;
    };

    static Measures measure(const std::vector<Image> &frames);
    static Verdict judge(const Measures &measures);
    // "good", "black", "flat", "noise", "frozen", "no frames".
    static const wchar_t *name(Verdict verdict);
    // One line for a person: "Picture: good (mean luma 120, ...)".
    static std::wstring sentence(Verdict verdict, const Measures &measures);

    static const double kBlackLuma;
    static const double kFlatSpread;
    static const double kNoiseStructure;

private:
    struct FrameFigures {
        double meanLuma;
        double spread;
        double structure;
    };

    static FrameFigures figuresOf(const Image &frame);
    static double changeBetween(const Image &earlier, const Image &later);
    static int lumaAt(const Image &frame, int x, int y);
};

} // namespace diag
} // namespace sorvane
