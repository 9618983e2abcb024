#include "PictureHealth.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace sorvane {
namespace diag {

// Darker than this on average, and one colour, is a black picture (a card without input).
const double PictureHealth::kBlackLuma = 24.0;
// Every channel varies less than this within the frame: one colour.
const double PictureHealth::kFlatSpread = 4.0;
// Neighbours hardly more alike than unrelated pixels: noise.
const double PictureHealth::kNoiseStructure = 0.25;

namespace {

// About 320 samples across and down (at least every second pixel) are plenty for these
// statistics and keep 500 HD frames quick.
int stepFor(const Image &frame)
{
    const int larger = frame.width > frame.height ? frame.width : frame.height;
    return larger / 320 > 2 ? larger / 320 : 2;
}

} // namespace

int PictureHealth::lumaAt(const Image &frame, int x, int y)
{
    const unsigned char *pixel = frame.row(y) + x * 3;
    return (pixel[0] * 29 + pixel[1] * 150 + pixel[2] * 77) >> 8;
}

PictureHealth::FrameFigures PictureHealth::figuresOf(const Image &frame)
{
    FrameFigures figures = {0.0, 0.0, 0.0};
    double sum[3] = {0, 0, 0};
    double squares[3] = {0, 0, 0};
    double luma = 0;
    double neighbours = 0;
    double unrelated = 0;
    size_t count = 0;
    const int step = stepFor(frame);
    for (int y = 0; y < frame.height; y += step) {
        const unsigned char *row = frame.row(y);
        for (int x = 0; x < frame.width; x += step) {
            for (int c = 0; c < 3; ++c) {
                sum[c] += row[x * 3 + c];
                squares[c] += static_cast<double>(row[x * 3 + c]) * row[x * 3 + c];
            }
            const int here = lumaAt(frame, x, y);
            luma += here;
            // The right-hand neighbour, against the pixel half a picture away in both directions.
            neighbours += std::abs(here - lumaAt(frame, x + 1 < frame.width ? x + 1 : x - (x > 0), y));
            unrelated += std::abs(
                here - lumaAt(frame, (x + frame.width / 2) % frame.width, (y + frame.height / 2) % frame.height));
            ++count;
        }
    }
    if (!count)
        return figures;
    figures.meanLuma = luma / count;
    for (int c = 0; c < 3; ++c) {
        const double mean = sum[c] / count;
        const double variance = squares[c] / count - mean * mean;
        const double deviation = variance > 0 ? std::sqrt(variance) : 0.0;
        if (deviation > figures.spread)
            figures.spread = deviation;
    }
    // A picture without differences has no structure to speak of, and no noise either.
    figures.structure = unrelated > 0 ? 1.0 - neighbours / unrelated : 1.0;
    return figures;
}

double PictureHealth::changeBetween(const Image &earlier, const Image &later)
{
    if (earlier.width != later.width || earlier.height != later.height)
        return 255.0;
    double total = 0;
    size_t count = 0;
    const int step = stepFor(later);
    for (int y = 0; y < later.height; y += step) {
        for (int x = 0; x < later.width; x += step) {
            total += std::abs(lumaAt(later, x, y) - lumaAt(earlier, x, y));
            ++count;
        }
    }
    return count ? total / count : 0.0;
}

PictureHealth::Measures PictureHealth::measure(const std::vector<Image> &frames)
{
    Measures measures;
    measures.frames = frames.size();
    if (frames.empty())
        return measures;
    for (size_t i = 0; i < frames.size(); ++i) {
        const FrameFigures figures = figuresOf(frames[i]);
        measures.meanLuma += figures.meanLuma;
        measures.spread += figures.spread;
        measures.structure += figures.structure;
        if (i == 0)
            continue;
        measures.change += changeBetween(frames[i - 1], frames[i]);
        if (frames[i].width == frames[i - 1].width && frames[i].height == frames[i - 1].height &&
            frames[i].bgr == frames[i - 1].bgr)
            ++measures.identicalPairs;
    }
    measures.meanLuma /= frames.size();
    measures.spread /= frames.size();
    measures.structure /= frames.size();
    if (frames.size() > 1)
        measures.change /= frames.size() - 1;
    return measures;
}

PictureHealth::Verdict PictureHealth::judge(const Measures &measures)
{
    if (!measures.frames)
        return NO_FRAMES;
    if (measures.spread < kFlatSpread)
        return measures.meanLuma < kBlackLuma ? BLACK : FLAT;
    if (measures.structure < kNoiseStructure)
        return NOISE;
    // One repeated frame proves nothing; a camera that never changes a pixel has stopped.
    if (measures.frames > 1 && measures.identicalPairs == measures.frames - 1)
        return FROZEN;
    return GOOD;
}

const wchar_t *PictureHealth::name(Verdict verdict)
{
    static const wchar_t *const kNames[] = {L"good", L"black", L"flat", L"noise", L"frozen", L"no frames"};
    return kNames[verdict];
}

std::wstring PictureHealth::sentence(Verdict verdict, const Measures &measures)
{
    static const wchar_t *const kMeanings[] = {
        L"a picture with structure",           L"every frame is black",
        L"every frame is one colour",          L"the frames have no structure, as noise",
        L"every frame repeats the one before", L"nothing to judge",
    };
    wchar_t figures[160];
    std::swprintf(figures, sizeof figures / sizeof figures[0],
                  L" (luma %.0f, spread %.1f, structure %.2f, change %.2f, %u of %u frames repeated)",
                  measures.meanLuma, measures.spread, measures.structure, measures.change,
                  static_cast<unsigned>(measures.identicalPairs), static_cast<unsigned>(measures.frames));
    return std::wstring(L"Picture: ") + name(verdict) + L": " + kMeanings[verdict] + figures + L".";
}

} // namespace diag
} // namespace sorvane
