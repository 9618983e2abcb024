#include "PictureCheck.h"
#include "AviFile.h"
#include "CaptureClasses.h"
#include "CommandContext.h"
#include "FrameConverter.h"
#include "ImageCodec.h"
#include "JpegScanner.h"
#include "JsonWriter.h"
#include "PictureHealth.h"
#include "RunReport.h"
#include "Terminal.h"

#include <CaptureException.h>

#include <boost/checked_delete.hpp>

#include <cstring>

namespace sorvane {
namespace diag {

std::vector<Image> PictureCheck::decode(const CapturedFrames &frames)
{
    std::vector<Image> pictures;
    if (frames.layout == CapturedFrames::JPEG) {
        ImageCodec codec;
        const size_t limit = static_cast<size_t>(frames.width) * frames.height * 3 + 4096;
        for (const boost::shared_ptr<unsigned char> &frame : frames.buffers) {
            const size_t size = JpegScanner::length(frame.get(), limit);
            if (size)
                pictures.push_back(codec.decodeJpeg(frame.get(), size));
        }
        return pictures;
    }
    if (!FrameConverter::isRaw(frames.layout))
        return pictures;
    for (const boost::shared_ptr<unsigned char> &frame : frames.buffers)
        pictures.push_back(
            FrameConverter::toImage(frame.get(), frames.layout, frames.width, frames.height, frames.bottomUp));
    return pictures;
}

ruvo::TestResult PictureCheck::judge(CommandContext &context, const CapturedFrames &frames,
                                     const ruvo::TestResult &result)
{
    if (result != ruvo::TestResult::PASS())
        return result;
    return conclude(context, L"capture", decode(frames), result);
}

ruvo::TestResult PictureCheck::judgeSample(CommandContext &context, const ruvo::DiagDevice &device,
                                           const ruvo::TestResult &result)
{
    if (result != ruvo::TestResult::PASS())
        return result;
    if (CaptureClasses::isTuner(device)) {
        notJudged(context, L"a TV tuner's picture is not sampled");
        return result;
    }
    context.terminal().line(L"Capturing " + std::to_wstring(kSampleFrames) + L" frames to judge the picture...");
    CapturedFrames sample;
    try {
        sample = CaptureClasses::captureFrames(device, CommandContext::windowTitle(device),
                                               CommandContext::captureDelay(), kSampleFrames);
    } catch (const CaptureException &) {
        // The library's test has passed and keeps its result; only the judgement is missing.
        notJudged(context, L"the sample of frames could not be captured");
        return result;
    }
    return conclude(context, L"sample", decode(sample), result);
}

ruvo::TestResult PictureCheck::judgeRecording(CommandContext &context, const std::wstring &path,
                                              const ruvo::TestResult &result)
{
    if (result != ruvo::TestResult::PASS())
        return result;
    std::wstring problem;
    const std::vector<Image> pictures = decode(readRecording(path, kRecordingFrames, problem));
    if (pictures.empty()) {
        notJudged(context, L"the recording could not be read (" + problem + L")");
        return result;
    }
    return conclude(context, L"recording", pictures, result);
}

namespace {

CapturedFrames::Layout layoutOf(const BITMAPINFOHEADER &format)
{
    switch (format.biCompression) {
    case BI_RGB:
        return format.biBitCount == 24 ? CapturedFrames::BGR24 : CapturedFrames::UNKNOWN;
    case MAKEFOURCC('Y', 'U', 'Y', '2'):
        return CapturedFrames::YUY2;
    case MAKEFOURCC('U', 'Y', 'V', 'Y'):
        return CapturedFrames::UYVY;
    case MAKEFOURCC('M', 'J', 'P', 'G'):
        return CapturedFrames::JPEG;
    default:
        return CapturedFrames::UNKNOWN;
    }
}

} // namespace

CapturedFrames PictureCheck::readRecording(const std::wstring &path, unsigned limit, std::wstring &problem)
{
    CapturedFrames frames;
    const AviFile avi(path);
    if (!avi.valid()) {
        problem = std::wstring(avi.problem().begin(), avi.problem().end());
        return frames;
    }
    const BITMAPINFOHEADER &format = avi.format();
    const CapturedFrames::Layout layout = layoutOf(format);
    if (layout == CapturedFrames::UNKNOWN || format.biWidth <= 0 || format.biHeight == 0) {
        problem = L"a video format the host does not read";
        return frames;
    }
    frames.layout = layout;
    frames.width = format.biWidth;
    frames.height = format.biHeight < 0 ? -format.biHeight : format.biHeight;
    frames.bottomUp = layout == CapturedFrames::BGR24 && format.biHeight > 0;
    // A raw frame shorter than its format says is a dropped frame's empty chunk: left out.
    const size_t rawBytes =
        FrameConverter::isRaw(layout) ? FrameConverter::frameBytes(layout, frames.width, frames.height) : 1;
    const int first = avi.frameCount() > static_cast<int>(limit) ? avi.frameCount() - static_cast<int>(limit) : 0;
    for (int i = first; i < avi.frameCount(); ++i) {
        const size_t length = static_cast<size_t>(avi.frameLength(i));
        if (length < rawBytes)
            continue;
        boost::shared_ptr<unsigned char> copy(new unsigned char[length], boost::checked_array_deleter<unsigned char>());
        std::memcpy(copy.get(), avi.frameData(i), length);
        frames.buffers.push_back(copy);
    }
    if (frames.buffers.empty())
        problem = L"it holds no whole video frame";
    return frames;
}

ruvo::TestResult PictureCheck::conclude(CommandContext &context, const std::wstring &source,
                                        const std::vector<Image> &pictures, const ruvo::TestResult &result)
{
    const PictureHealth::Measures measures = PictureHealth::measure(pictures);
    const PictureHealth::Verdict verdict = PictureHealth::judge(measures);
    const bool strict = context.options().has(L"--strict");
    const bool bad = verdict != PictureHealth::GOOD;
    context.terminal().line(PictureHealth::sentence(verdict, measures));
    context.report().addSection(L"picture", [=](JsonWriter &json) {
        json.beginObject();
        json.field(L"verdict", PictureHealth::name(verdict));
        json.field(L"source", source);
        json.field(L"frames", static_cast<int>(measures.frames));
        json.field(L"meanLuma", measures.meanLuma);
        json.field(L"spread", measures.spread);
        json.field(L"structure", measures.structure);
        json.field(L"change", measures.change);
        json.field(L"identicalPairs", static_cast<int>(measures.identicalPairs));
        json.field(L"strict", strict);
        json.endObject();
    });
    if (!bad || !strict)
        return result;
    context.say(L"--strict: a " + std::wstring(PictureHealth::name(verdict)) + L" picture fails the test.");
    return ruvo::TestResult::FAIL();
}

void PictureCheck::notJudged(CommandContext &context, const std::wstring &why)
{
    context.terminal().line(L"Picture: not judged: " + why + L".");
    context.report().addSection(L"picture", [=](JsonWriter &json) {
        json.beginObject();
        json.field(L"verdict", L"not judged");
        json.field(L"reason", why);
        json.endObject();
    });
}

} // namespace diag
} // namespace sorvane
